// A program that a test starts, and that ends with it.
//
// No test waits by the clock: a program that takes its time to be ready is asked to say so.
#pragma once

#include <fcntl.h>
#include <sys/prctl.h>
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
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (auto& word : command) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) become(arguments, ends[1], announces);
    ::close(ends[1]);
    if (pid_ > 0 && announces >= 0) line_ = readLine(ends[0]);
    ::close(ends[0]);
    if (pid_ < 0) throw std::runtime_error("fork");
    if (announces >= 0 && line_.empty()) throw std::runtime_error(command[0] + " does not start");
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
  /// Stops, continues or ends it.
  void signal(int number) const { kill(pid_, number); }
  /// Waits for the end; the exit status.
  int finish() {
    int status = -1;
    waitpid(std::exchange(pid_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  /// In the child: only calls that are safe after a fork.
  [[noreturn]] static void become(const std::vector<char*>& arguments, int end, int announces) {
    // A test that is killed, or ends itself over an error, destroys nothing.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (announces == end) {
      fcntl(end, F_SETFD, 0);
    } else if (announces >= 0) {
      dup2(end, announces);
    }
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
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
