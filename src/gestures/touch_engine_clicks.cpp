// What the fingers mean for a physical click: the event tap's questions.

#include <algorithm>
#include <string>

#include "gestures/touch_engine.hpp"

namespace velotap {
namespace {

struct ClickTriggers {
  bool mouseClick3;
  bool mouseClick2;
  bool mouseClick1Center;
  bool padClick3;
  CenterBand centerBand;
  bool pinching;
};

bool answersPadClicks(const Config& config, const SystemPreferences& system) {
  return config.isOn(Trigger::padClick3) &&
         programAnswers(config.trackpadMode(),
                        system.desktopClicksFor(TrackpadGesture::threeFingerClick));
}

bool qualifies(const DeviceState& state, const ClickTriggers& triggers) {
  switch (state.deviceClass) {
    case DeviceClass::trackpad:
      return state.count == 3 && triggers.padClick3;
    case DeviceClass::magicMouse:
      switch (state.count) {
        case 3:
          return triggers.mouseClick3;
        case 2:
          return triggers.mouseClick2 && !triggers.pinching;
        case 1:
          return triggers.mouseClick1Center &&
                 triggers.centerBand.contains(state.singleFingerPos.x);
        default:
          return false;
      }
  }
  return false;
}

}  // namespace

bool TouchEngine::hasActiveContact() const {
  const std::lock_guard guard(lock_);
  return clickConversion_.heldButton.has_value() ||
         std::any_of(states_.begin(), states_.end(),
                     [](const Entry& entry) { return entry.state.count >= 1; });
}

void TouchEngine::notePhysicalButtonDown() {
  const std::lock_guard guard(lock_);
  for (Entry& entry : states_) {
    if (entry.state.sessionStart) entry.state.sessionConsumedByClick = true;
  }
  lastNaturalClick_ = services_.clock.uptime();
}

bool TouchEngine::shouldSwallowSyntheticLeftClick(bool canIdentifyPhysicalEvents,
                                                  bool wasObservedAtHID) {
  const std::lock_guard guard(lock_);
  // Only a press that never passed the lowest level can be synthetic.
  if (!canIdentifyPhysicalEvents || wasObservedAtHID) return false;
  if (services_.clock.uptime() >= suppressLeftClickUntil_) return false;
  int fingersOnPads = 0;
  for (const Entry& entry : states_) {
    if (entry.state.deviceClass == DeviceClass::trackpad) fingersOnPads += entry.state.count;
  }
  if (fingersOnPads == 0) {
    suppressLeftClickUntil_ = kNever;  // one tap has one echo
    return true;
  }
  if (services_.log.enabled()) {
    services_.log.line("suppression window active but trackpad has " +
                       std::to_string(fingersOnPads) + " finger(s) — not swallowing");
  }
  return false;
}

bool TouchEngine::shouldConvertClick(Button button) {
  const Config& config = services_.config;
  if (!config.enabled()) return false;
  const auto context = services_.apps.gestureContext();
  if (!context) return false;
  const ClickTriggers triggers = {
      .mouseClick3 = config.isOn(Trigger::mouseClick3),
      .mouseClick2 = config.isOn(Trigger::mouseClick2),
      .mouseClick1Center = config.isOn(Trigger::mouseClick1Center),
      .padClick3 = answersPadClicks(config, services_.systemPreferences),
      .centerBand = config.centerBand(),
      .pinching = services_.pinch.isPinching()};
  const std::lock_guard guard(lock_);
  if (clickConversion_.heldButton) return false;
  int touching = 0;
  int candidates = 0;
  DeviceState* candidate = nullptr;
  for (Entry& entry : states_) {
    if (entry.state.count > 0) ++touching;
    if (entry.state.targetBundleID == context->bundleID && qualifies(entry.state, triggers)) {
      ++candidates;
      candidate = &entry.state;
    }
  }
  // With fingers on two devices nobody can tell which of them the click belongs to.
  if (touching == 1) keepCenterClick(context->bundleID, triggers.mouseClick1Center);
  if (touching != 1 || candidates != 1) return false;
  if (!services_.apps.mayDeliver(context->bundleID, true)) return false;
  clickConversion_.heldButton = button;
  if (candidate->sessionStart) candidate->sessionConsumedByClick = true;
  return true;
}

// A click beside the band is the evidence that it is too narrow, so it is kept as well.
void TouchEngine::keepCenterClick(AppId target, bool wanted) {
  if (!wanted) return;
  for (const Entry& entry : states_) {
    const DeviceState& state = entry.state;
    if (state.deviceClass == DeviceClass::magicMouse && state.count == 1 &&
        state.targetBundleID == target) {
      services_.activity.keepClick(state.singleFingerPos);
    }
  }
}

bool TouchEngine::isConverting(Button button) {
  const std::lock_guard guard(lock_);
  return clickConversion_.heldButton == button;
}

bool TouchEngine::endConversion(Button button) {
  const std::lock_guard guard(lock_);
  if (clickConversion_.heldButton != button) return false;
  clickConversion_.heldButton.reset();
  return true;
}

bool TouchEngine::abandonConversion() {
  const std::lock_guard guard(lock_);
  return abandonConversionLocked();
}

bool TouchEngine::abandonConversionLocked() noexcept {
  const bool held = clickConversion_.heldButton.has_value();
  clickConversion_.heldButton.reset();
  suppressLeftClickUntil_ = kNever;
  return held;
}

}  // namespace velotap
