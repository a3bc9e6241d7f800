// The multitouch surfaces that are connected, and word of new and vanished ones, through udev.
//
// Main thread. Without udev (a container, a rescue system) there are no devices and no notices.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "platform/system_notices.hpp"

struct udev;
struct udev_device;
struct udev_monitor;

namespace velotap {

/// The event nodes of all connected surfaces, for example "/dev/input/event5".
[[nodiscard]] std::vector<std::string> surfaceNodes();

/// Device notices come from udev; sleep and display notices are not available from here, and cost
/// only themselves.
class UdevNotices final : public SystemNotices {
 public:
  explicit UdevNotices(DescriptorLoop& loop);
  ~UdevNotices() override;
  UdevNotices(const UdevNotices&) = delete;
  UdevNotices& operator=(const UdevNotices&) = delete;

  [[nodiscard]] DeviceWatch watchDevices(std::function<void()> attached,
                                         std::function<void()> detached) override;
  [[nodiscard]] Observation watchSleep(std::function<void()> willSleep,
                                       std::function<void()> didWake) override;
  [[nodiscard]] Observation watchDisplays(std::function<void()> reconfigured) override;

 private:
  struct Monitor;
  DescriptorLoop& loop_;
};

}  // namespace velotap
