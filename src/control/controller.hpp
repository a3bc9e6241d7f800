// The one answer to whether the listeners run, and the only place that starts and stops them.
//
// Main thread throughout, no lock. What starting, stopping and announcing mean are closures, so
// that the logic is exercised without devices. A failed start is not retried: the next device
// change, permission change, activation or switch asks again.
#pragma once

#include <functional>

#include "base/observer_list.hpp"
#include "config/config.hpp"
#include "gestures/touch_engine.hpp"
#include "output/event_tap.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/system_notices.hpp"

namespace velotap {

class Controller {
 public:
  struct Closures {
    /// The master switch is on and the program may read touches and post events.
    std::function<bool()> canRun;
    /// True when both the engine and the event tap run; leaves nothing half-started behind.
    std::function<bool()> startListeners;
    std::function<void()> stopListeners;
    /// Told after every change, and after every stop that changed nothing.
    std::function<void()> didChangeState;
  };

  Controller(Closures closures, DiagnosticLog& log);

  /// The controller of this process.
  [[nodiscard]] static Controller& shared();

  /// What the closures are in production. `didChangeState` is left empty for whoever shows it.
  [[nodiscard]] static Closures productionClosures(const Config& config, AccessibilityTrust& trust,
                                                   TouchEngine& engine, EventTap& tap,
                                                   DiagnosticLog& log);

  /// Starts the listeners if they may run and do not; stops them if they may not.
  void start();
  /// Stops whatever runs, then starts.
  void restart();
  /// Stops the listeners: for pauses, lost permission, a lost event tap and the end of the program.
  void stop();

  [[nodiscard]] bool isRunning() const noexcept { return isRunning_; }
  /// Calls back whenever `isRunning` changes.
  [[nodiscard]] Observation observeRunning(std::function<void(bool)> changed);

  Closures closures;

 private:
  void setRunning(bool running);

  DiagnosticLog& log_;
  bool isRunning_ = false;
  ObserverList<bool> runningChanges_;
};

}  // namespace velotap
