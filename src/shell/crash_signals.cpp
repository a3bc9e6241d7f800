// Kept apart from the handler, so that what the handler calls can be listed from its object file.
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "shell/crash_marker.hpp"

namespace {
constexpr std::array kFatalSignals = {SIGABRT, SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP};
}

void MCInstallCrashSignalHandlers(const char* path) {
  if (crash_log_fd >= 0) close(crash_log_fd);
  crash_log_fd = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  for (const int signal : kFatalSignals) {
    struct sigaction action = {};
    action.sa_handler = &write_crash_marker;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
  }
}
