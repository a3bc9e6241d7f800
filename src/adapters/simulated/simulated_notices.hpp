// Devices that come and go, sleep and displays, as the simulation says; and a system that may
// refuse to watch for devices.
//
// Main thread, but for `displayReconfigured`, which any thread may call as on a real system.
#pragma once

#include <functional>
#include <optional>

#include "platform/system_notices.hpp"

namespace velotap {

class SimulatedNotices final : public SystemNotices {
 public:
  [[nodiscard]] DeviceWatch watchDevices(std::function<void()> attached,
                                         std::function<void()> detached) override;
  [[nodiscard]] Observation watchSleep(std::function<void()> willSleep,
                                       std::function<void()> didWake) override;
  [[nodiscard]] Observation watchDisplays(std::function<void()> reconfigured) override;

  /// What later calls of `watchDevices` find.
  struct Failures {
    bool port = false;
    std::optional<int> attach;
    std::optional<int> detach;
  };
  void setFailures(Failures failures) { failures_ = failures; }

  void deviceAttached() const { attached_.notify(); }
  void deviceDetached() const { detached_.notify(); }
  void willSleep() const { sleep_.notify(); }
  void didWake() const { wake_.notify(); }
  void displayReconfigured() const { displays_.notify(); }

 private:
  Failures failures_;
  ObserverList<> attached_;
  ObserverList<> detached_;
  ObserverList<> sleep_;
  ObserverList<> wake_;
  ObserverList<> displays_;
};

}  // namespace velotap
