// A program that a test starts, and that ends with it.
//
// No test waits by the clock: a program that takes its time to be ready is asked to say so.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace velotap {

class ChildProcess {
 public:
  /// `announces`: the program writes a line to this descriptor once it is ready.
  explicit ChildProcess(std::vector<std::string> command, int announces = -1) {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (announces >= 0) posix_spawn_file_actions_adddup2(&actions, ends[1], announces);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (auto& word : command) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int error =
        posix_spawnp(&pid_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    if (error == 0 && announces >= 0) line_ = readLine(ends[0]);
    ::close(ends[0]);
    if (error != 0) throw std::runtime_error(command[0] + " cannot be started");
  }
  ~ChildProcess() {
    if (pid_ > 0) {
      kill(pid_, SIGTERM);
      waitpid(pid_, nullptr, 0);
    }
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// What it announced: an address, the number of a display.
  [[nodiscard]] const std::string& line() const { return line_; }
  /// Waits for the end; the exit status.
  int finish() {
    int status = -1;
    waitpid(std::exchange(pid_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  static std::string readLine(int descriptor) {
    std::string line;
    char c = 0;
    while (::read(descriptor, &c, 1) == 1 && c != '\n') line += c;
    return line;
  }
  pid_t pid_ = -1;
  std::string line_;
};

}  // namespace velotap
