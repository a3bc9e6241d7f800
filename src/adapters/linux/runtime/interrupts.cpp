#include "adapters/linux/runtime/interrupts.hpp"

#include <sys/signalfd.h>

#include <csignal>

namespace velotap {

Descriptor takeInterrupts() {
  sigset_t interrupts;
  sigemptyset(&interrupts);
  sigaddset(&interrupts, SIGINT);
  sigaddset(&interrupts, SIGTERM);
  sigaddset(&interrupts, SIGHUP);
  sigprocmask(SIG_BLOCK, &interrupts, nullptr);
  return Descriptor(::signalfd(-1, &interrupts, SFD_CLOEXEC | SFD_NONBLOCK));
}

}  // namespace velotap
