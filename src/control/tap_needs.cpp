#include "control/tap_needs.hpp"

namespace velotap {

TapNeeds tapNeeds(const Config& config) {
  if (!config.enabled()) return {};
  return {.mouseClicks = config.isOn(Trigger::mouseClick1Center) ||
                         config.isOn(Trigger::mouseClick2) || config.isOn(Trigger::mouseClick3),
          .mouseGestures = config.isOn(Trigger::mousePinchZoom) ||
                           config.isOn(Trigger::mouseRotate) ||
                           config.isOn(Trigger::mouseSwipe3Nav),
          .trackpadClicks = config.isOn(Trigger::padClick3)};
}

TapNeedsTeller::TapNeedsTeller(Config& config, EventTaps& taps)
    : config_(config), taps_(taps), told_(tapNeeds(config)) {
  taps_.setNeeds(told_);
  changes_ = config.defaults().observeChanges([this] { tell(); });
}

void TapNeedsTeller::tell() {
  const TapNeeds needs = tapNeeds(config_);
  if (needs == told_) return;
  told_ = needs;
  taps_.setNeeds(needs);
}

}  // namespace velotap
