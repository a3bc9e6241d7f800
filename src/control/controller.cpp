#include "control/controller.hpp"

#include <utility>

#include "control/tap_needs.hpp"
#include "platform/platform.hpp"

namespace velotap {

Controller::Controller(Closures initial, DiagnosticLog& log)
    : closures(std::move(initial)), log_(log) {}

Controller& Controller::shared() {
  Platform& platform = Platform::current();
  static EventTap tap(platform.taps, TouchEngine::shared(), platform.events, platform.clock,
                      platform.mainQueue, platform.log);
  static Controller instance(productionClosures(Config::shared(), platform.trust,
                                                TouchEngine::shared(), tap, platform.log),
                             platform.log);
  static const TapNeedsTeller needs(Config::shared(), platform.taps);
  static const bool wired = [] {
    tap.setLostHandler([] { instance.stop(); });
    return true;
  }();
  static_cast<void>(wired);
  return instance;
}

Controller::Closures Controller::productionClosures(const Config& config, AccessibilityTrust& trust,
                                                    TouchEngine& engine, EventTap& tap,
                                                    DiagnosticLog& log) {
  return {.canRun = [&config, &trust] { return config.enabled() && trust.trusted(); },
          .startListeners =
              [&engine, &tap, &log] {
                if (!engine.start()) {
                  if (log.enabled()) log.line("no multitouch device could be started");
                  return false;
                }
                if (tap.start()) return true;
                engine.stop();
                return false;
              },
          .stopListeners =
              [&engine, &tap] {
                engine.stop();
                tap.stop();
              },
          .didChangeState = {}};
}

void Controller::start() {
  if (!closures.canRun()) {
    stop();
    return;
  }
  if (isRunning_) return;
  setRunning(closures.startListeners());
  if (closures.didChangeState) closures.didChangeState();
}

void Controller::restart() {
  if (log_.enabled()) log_.line("restarting listeners");
  stop();
  start();
}

void Controller::stop() {
  closures.stopListeners();
  setRunning(false);
  if (closures.didChangeState) closures.didChangeState();
}

Observation Controller::observeRunning(std::function<void(bool)> changed) {
  return runningChanges_.add(std::move(changed));
}

void Controller::setRunning(bool running) {
  if (running == isRunning_) return;
  isRunning_ = running;
  runningChanges_.notify(running);
}

}  // namespace velotap
