// What goes stale on a Linux desktop, from whoever knows: devices from udev, sleep from the login
// manager, displays from the display server.
//
// Main thread. A service that is missing costs only its own notices.
#pragma once

#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/devices/udev_devices.hpp"
#include "adapters/linux/notices/display_watch.hpp"
#include "adapters/linux/notices/sleep_notices.hpp"
#include "adapters/linux/session/session_environment.hpp"
#include "platform/main_queue.hpp"
#include "platform/system_notices.hpp"

namespace velotap {

class LinuxNotices final : public SystemNotices {
 public:
  /// Connects to nothing before somebody asks for the notices of that kind.
  LinuxNotices(DescriptorLoop& loop, MainQueue& queue, SessionEnvironment session,
               std::string systemBusAddress);

  [[nodiscard]] DeviceWatch watchDevices(std::function<void()> attached,
                                         std::function<void()> detached) override;
  [[nodiscard]] Observation watchSleep(std::function<void()> willSleep,
                                       std::function<void()> didWake) override;
  [[nodiscard]] Observation watchDisplays(std::function<void()> reconfigured) override;

 private:
  DescriptorLoop& loop_;
  MainQueue& queue_;
  const SessionEnvironment session_;
  const std::string systemBusAddress_;
  UdevNotices devices_;
  std::unique_ptr<SleepNotices> sleep_;
  std::unique_ptr<DisplayWatch> displays_;
  ObserverList<> displayChanges_;
};

}  // namespace velotap
