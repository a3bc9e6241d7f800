// Devices over IOKit, sleep over the workspace, displays over Core Graphics.
//
// Main thread, but for the display's callback, which comes on whatever thread the system chooses.
// Devices that are present when a watch begins are not reported.
#pragma once

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "adapters/macos/core_foundation/core_foundation_api.hpp"
#include "adapters/macos/devices/io_kit_api.hpp"
#include "adapters/macos/quartz/quartz_api.hpp"
#include "platform/system_notices.hpp"

namespace velotap {

class MacNotices final : public SystemNotices {
 public:
  MacNotices(const CoreFoundationApi& cf, const IoKitApi& ioKit, const QuartzApi& quartz,
             CocoaWorkspace& workspace)
      : cf_(cf), ioKit_(ioKit), quartz_(quartz), workspace_(workspace) {}

  [[nodiscard]] DeviceWatch watchDevices(std::function<void()> attached,
                                         std::function<void()> detached) override;
  [[nodiscard]] Observation watchSleep(std::function<void()> willSleep,
                                       std::function<void()> didWake) override;
  [[nodiscard]] Observation watchDisplays(std::function<void()> reconfigured) override;

 private:
  const CoreFoundationApi& cf_;
  const IoKitApi& ioKit_;
  const QuartzApi& quartz_;
  CocoaWorkspace& workspace_;
};

}  // namespace velotap
