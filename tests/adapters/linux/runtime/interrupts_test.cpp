#include "adapters/linux/runtime/interrupts.hpp"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace velotap {
namespace {

bool readable(const Descriptor& descriptor) {
  pollfd poll = {.fd = descriptor.get(), .events = POLLIN, .revents = 0};
  return ::poll(&poll, 1, 0) == 1;
}

// In a child, since what is blocked stays blocked.
int endsAfter(int signal) {
  const pid_t child = ::fork();
  if (child == 0) {
    const Descriptor interrupts = takeInterrupts();
    const bool before = readable(interrupts);
    ::raise(signal);
    ::_exit(!before && readable(interrupts) ? 0 : 1);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  return status;
}

TEST(Interrupts, areWaitedForInsteadOfEndingTheProcess) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) EXPECT_EQ(endsAfter(signal), 0) << signal;
}

TEST(Interrupts, othersEndTheProcess) {
  EXPECT_TRUE(WIFSIGNALED(endsAfter(SIGUSR1)));
}

}  // namespace
}  // namespace velotap
