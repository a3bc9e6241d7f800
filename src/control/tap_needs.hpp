// What the settings want of the events of touch devices, told to the event taps as it changes.
//
// Main thread.
#pragma once

#include "base/observer_list.hpp"
#include "config/config.hpp"
#include "platform/event_taps.hpp"

namespace velotap {

/// Nothing is wanted while the master switch is off.
[[nodiscard]] TapNeeds tapNeeds(const Config& config);

class TapNeedsTeller {
 public:
  /// Tells the taps at once, and after every change of the settings. Neither may go before it.
  TapNeedsTeller(Config& config, EventTaps& taps);

 private:
  void tell();

  const Config& config_;
  EventTaps& taps_;
  TapNeeds told_;
  Observation changes_;
};

}  // namespace velotap
