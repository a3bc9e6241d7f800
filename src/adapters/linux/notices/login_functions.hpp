// The functions of the login manager's library, looked up when somebody needs them: it is the
// library of the message bus, which is not loaded for nothing.
//
// Any thread; stays loaded for the life of the process. Tests put functions of their own in place.
#pragma once

#include <systemd/sd-login.h>

namespace velotap {

struct LoginFunctions {
  decltype(&::sd_pid_get_session) pidSession = nullptr;
  decltype(&::sd_uid_get_display) displaySession = nullptr;
  decltype(&::sd_session_is_active) isActive = nullptr;
  decltype(&::sd_login_monitor_new) newMonitor = nullptr;
  decltype(&::sd_login_monitor_unref) endMonitor = nullptr;
  decltype(&::sd_login_monitor_get_fd) descriptorOf = nullptr;
  decltype(&::sd_login_monitor_flush) flush = nullptr;

  /// Null when no library has them all.
  [[nodiscard]] static const LoginFunctions* load();
};

}  // namespace velotap
