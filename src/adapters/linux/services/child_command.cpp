#include "adapters/linux/services/child_command.hpp"

#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <utility>

extern char** environ;

namespace velotap {
namespace {

bool isExecutable(const std::string& path) {
  struct stat entry = {};
  return ::stat(path.c_str(), &entry) == 0 && S_ISREG(entry.st_mode) &&
         ::access(path.c_str(), X_OK) == 0;
}

// Signals that this program blocks or ignores are its own affair.
class Attributes {
 public:
  Attributes() {
    posix_spawnattr_init(&attributes_);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes_, &none);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  [[nodiscard]] const posix_spawnattr_t* get() const noexcept { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

}  // namespace

std::optional<std::string> findProgram(const std::string& program, const std::string& searchPath) {
  if (program.find('/') != std::string::npos) {
    return isExecutable(program) ? std::optional(program) : std::nullopt;
  }
  std::string_view rest = searchPath;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    std::string path(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    // Relative folders would make what is started depend on where this program was started.
    if (!path.starts_with('/')) continue;
    path.append("/").append(program);
    if (isExecutable(path)) return path;
  }
  return std::nullopt;
}

std::optional<std::string> findProgram(const std::string& program) {
  const char* const searchPath = std::getenv("PATH");
  return findProgram(program, searchPath == nullptr ? "/usr/local/bin:/usr/bin:/bin" : searchPath);
}

std::optional<ChildCommand> ChildCommand::start(const std::vector<std::string>& command) {
  if (command.empty()) return std::nullopt;
  const auto program = findProgram(command.front());
  if (!program) return std::nullopt;
  std::vector<std::string> words = command;
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t pid = -1;
  const Attributes attributes;
  if (posix_spawn(&pid, program->c_str(), nullptr, attributes.get(), arguments.data(), environ) !=
      0) {
    return std::nullopt;
  }
  return ChildCommand(pid, Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0))));
}

std::optional<int> ChildCommand::finish(int waitMilliseconds) {
  if (status_) return status_;
  pollfd ended{.fd = process_.get(), .events = POLLIN, .revents = 0};
  if (process_.ok()) ::poll(&ended, 1, waitMilliseconds);
  int status = 0;
  if (::waitpid(pid_, &status, WNOHANG) != pid_) return std::nullopt;
  status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return status_;
}

}  // namespace velotap
