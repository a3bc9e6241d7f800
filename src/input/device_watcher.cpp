#include "input/device_watcher.hpp"

#include <string>
#include <utility>

namespace velotap {

struct DeviceWatcher::Core : std::enable_shared_from_this<Core> {
  Core(const Clock& c, MainQueue& q, SystemNotices& n, DiagnosticLog& l)
      : clock(c), queue(q), notices(n), log(l) {}

  void note(const std::string& text) const {
    if (log.enabled()) log.line(text);
  }

  void watchDevices() {
    auto watch = notices.watchDevices(
        [weak = weak_from_this()] {
          if (const auto self = weak.lock()) {
            self->note("multitouch device attached — restart in 2s");
            self->schedule(kDeviceDelay, false);
          }
        },
        [weak = weak_from_this()] {
          if (const auto self = weak.lock()) {
            self->note("multitouch device detached — pausing and restarting in 2s");
            self->schedule(kDeviceDelay, true);
          }
        });
    if (watch.portFailed) {
      note("IONotificationPortCreate failed");
      return;
    }
    if (watch.attachError) {
      note("IOServiceAddMatchingNotification failed: " + std::to_string(*watch.attachError));
    }
    if (watch.detachError) {
      note("IOServiceAddMatchingNotification(terminated) failed: " +
           std::to_string(*watch.detachError));
    }
    devices = std::move(watch.observation);
  }

  void watchSleep() {
    sleep = notices.watchSleep(
        [weak = weak_from_this()] {
          if (const auto self = weak.lock()) {
            self->note("system will sleep — pausing listeners");
            self->pauseForSleepSoon();
          }
        },
        [weak = weak_from_this()] {
          if (const auto self = weak.lock()) {
            self->note("system woke — restart in 10s");
            self->schedule(kWakeDelay, true);
          }
        });
  }

  void watchDisplays() {
    displays = notices.watchDisplays([weak = weak_from_this()] {
      if (const auto self = weak.lock()) {
        self->note("display reconfigured — restart in 2s");
        self->schedule(kDeviceDelay, true);
      }
    });
  }

  void schedule(double seconds, bool pauseImmediately) {
    queue.async([weak = weak_from_this(), seconds, pauseImmediately] {
      if (const auto self = weak.lock()) self->scheduleOnMain(seconds, pauseImmediately);
    });
  }

  void scheduleOnMain(double seconds, bool pauseImmediately) {
    if (pauseImmediately && onPause) onPause();
    const double deadline = clock.uptime() + seconds;
    if (pendingRestart && deadline <= pendingRestartUptime) return;
    cancelPending();
    pendingRestartUptime = deadline;
    pendingRestart = queue.asyncAfter(seconds, [weak = weak_from_this()] {
      const auto self = weak.lock();
      if (!self) return;
      self->pendingRestart.reset();
      if (self->onChange) self->onChange();
    });
  }

  void pauseForSleepSoon() {
    queue.async([weak = weak_from_this()] {
      const auto self = weak.lock();
      if (!self) return;
      self->cancelPending();
      if (self->onPause) self->onPause();
    });
  }

  void cancelPending() {
    if (pendingRestart) pendingRestart->cancel();
    pendingRestart.reset();
  }

  // Time for the system to finish what it is doing: wireless devices reconnect long after a wake.
  static constexpr double kDeviceDelay = 2.0;
  static constexpr double kWakeDelay = 10.0;

  const Clock& clock;
  MainQueue& queue;
  SystemNotices& notices;
  DiagnosticLog& log;
  bool started = false;
  std::function<void()> onPause;
  std::function<void()> onChange;
  std::shared_ptr<DelayedWork> pendingRestart;
  double pendingRestartUptime = 0;  // meaningful while pendingRestart is set
  Observation devices;
  Observation sleep;
  Observation displays;
};

DeviceWatcher::DeviceWatcher(const Clock& clock, MainQueue& queue, SystemNotices& notices,
                             DiagnosticLog& log)
    : core_(std::make_shared<Core>(clock, queue, notices, log)) {}

DeviceWatcher::~DeviceWatcher() = default;

void DeviceWatcher::start(std::function<void()> onPause, std::function<void()> onChange) {
  if (core_->started) return;
  core_->started = true;
  core_->onPause = std::move(onPause);
  core_->onChange = std::move(onChange);
  core_->watchDevices();
  core_->watchSleep();
  core_->watchDisplays();
}

void DeviceWatcher::scheduleRestart(double seconds, bool pauseImmediately) {
  core_->schedule(seconds, pauseImmediately);
}

void DeviceWatcher::pauseForSleepFromCallback() {
  core_->pauseForSleepSoon();
}

}  // namespace velotap
