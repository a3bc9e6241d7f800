// Runs something in a child process that is expected to end itself, and says how it ended.
//
// The child shares nothing afterwards; what it leaves behind are files.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <stdexcept>

namespace velotap::test {

struct ChildEnd {
  int status = -1;  ///< exit status; -1 when a signal ended it
  int signal = 0;
};

/// Nothing of the child reaches the terminal, and it leaves no core file.
inline ChildEnd runForked(const std::function<void()>& body) {
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("fork");
  if (child == 0) {
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    close(STDERR_FILENO);
    body();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFSIGNALED(status)) return {-1, WTERMSIG(status)};
  return {WEXITSTATUS(status), 0};
}

}  // namespace velotap::test
