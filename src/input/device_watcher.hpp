// Notices the moments at which running listeners go stale (a multitouch device attached or
// detached, sleep and wake, a display reconfiguration) and asks for one restart after a settling
// delay, however many such moments come in a row.
//
// Lives as long as the program; nothing is unregistered before that. All state changes happen on
// the main thread, and so do both closures; notices may arrive on any thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/clock.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/main_queue.hpp"
#include "platform/system_notices.hpp"

namespace velotap {

class DeviceWatcher {
 public:
  DeviceWatcher(const Clock& clock, MainQueue& queue, SystemNotices& notices, DiagnosticLog& log);
  ~DeviceWatcher();

  /// Installs all watches; does nothing the second time. `onPause` stops the listeners, `onChange`
  /// restarts them.
  void start(std::function<void()> onPause, std::function<void()> onChange);

  /// Asks for a restart `seconds` from now. A restart that is already due at that time or later
  /// covers the request; otherwise it replaces the one that is pending. Any thread.
  void scheduleRestart(double seconds, bool pauseImmediately);

  /// Pauses and forgets a pending restart: the wake will ask for its own. Any thread.
  void pauseForSleepFromCallback();

 private:
  // Tasks on the main queue may outlive the watcher; they hold this weakly.
  struct Core;
  std::shared_ptr<Core> core_;
};

}  // namespace velotap
