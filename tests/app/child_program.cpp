#include "child_program.hpp"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

namespace velotap::test {
namespace {

std::array<int, 2> makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }
  return ends;
}

std::string drain(int descriptor) {
  std::string text;
  std::array<char, 4096> buffer;
  for (ssize_t n = 0; (n = read(descriptor, buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(n));
  }
  return text;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

}  // namespace

ChildProgram::ChildProgram(const std::string& path, const std::vector<std::string>& arguments,
                           const std::map<std::string, std::string>& environment) {
  std::vector<std::string> argumentTexts = {path};
  argumentTexts.insert(argumentTexts.end(), arguments.begin(), arguments.end());
  std::vector<std::string> environmentTexts;
  for (const auto& [name, value] : environment) environmentTexts.push_back(name + "=" + value);
  const auto argv = pointers(argumentTexts);
  const auto envp = pointers(environmentTexts);
  const auto output = makePipe();
  const auto errors = makePipe();
  process_ = fork();
  if (process_ == 0) {
    dup2(output[1], STDOUT_FILENO);
    dup2(errors[1], STDERR_FILENO);
    execve(path.c_str(), argv.data(), envp.data());
    _exit(127);
  }
  close(output[1]);
  close(errors[1]);
  output_ = output[0];
  errors_ = errors[0];
}

ChildProgram::~ChildProgram() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  closeOutput();
  close(errors_);
}

std::optional<std::string> ChildProgram::readLine() {
  std::string line;
  for (char c = 0; read(output_, &c, 1) == 1; line += c) {
    if (c == '\n') return line;
  }
  if (line.empty()) return std::nullopt;
  return line;
}

std::string ChildProgram::readAll() {
  return drain(output_);
}

std::string ChildProgram::readErrors() {
  return drain(errors_);
}

void ChildProgram::closeOutput() {
  if (output_ >= 0) close(std::exchange(output_, -1));
}

void ChildProgram::signal(int number) const {
  kill(process_, number);
}

ChildProgram::End ChildProgram::await() {
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = -1;
  if (WIFSIGNALED(status)) return {.status = -1, .signal = WTERMSIG(status)};
  return {.status = WEXITSTATUS(status), .signal = 0};
}

}  // namespace velotap::test
