// Event taps over Quartz, served by the main run loop.
//
// Main thread only. The system may refuse a tap (null port), most of all one at the HID level. A
// tap may be destroyed at any time, its own callback included.
#pragma once

#include "adapters/macos/core_foundation/core_foundation_api.hpp"
#include "adapters/macos/quartz/quartz_api.hpp"
#include "platform/event_taps.hpp"

namespace velotap {

class QuartzEventTaps final : public EventTaps {
 public:
  QuartzEventTaps(const CoreFoundationApi& cf, const QuartzApi& quartz)
      : cf_(cf), quartz_(quartz) {}

  [[nodiscard]] std::unique_ptr<InstalledTap> install(TapLocation location, std::uint64_t mask,
                                                      Callbacks callbacks) override;

 private:
  const CoreFoundationApi& cf_;
  const QuartzApi& quartz_;
};

}  // namespace velotap
