// Stops the main thread of a process, and no other, for some time: what a program looks like whose
// main thread is stuck. `stop_thread PROCESS MILLISECONDS` prints "stopped" and "resumed".

#include <sys/ptrace.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: stop_thread PROCESS MILLISECONDS\n");
    return 2;
  }
  const int process = std::atoi(argv[1]);
  const long milliseconds = std::atol(argv[2]);
  if (::ptrace(PTRACE_SEIZE, process, nullptr, nullptr) != 0 ||
      ::ptrace(PTRACE_INTERRUPT, process, nullptr, nullptr) != 0 ||
      ::waitpid(process, nullptr, __WALL) != process) {
    std::perror("stop_thread");
    return 1;
  }
  std::printf("stopped\n");
  std::fflush(stdout);
  timespec rest = {.tv_sec = milliseconds / 1000, .tv_nsec = milliseconds % 1000 * 1'000'000};
  while (::nanosleep(&rest, &rest) != 0 && errno == EINTR) {
  }
  std::printf("resumed\n");
  std::fflush(stdout);
  return 0;  // the end of the tracer lets the thread go
}
