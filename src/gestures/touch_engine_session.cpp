// The touch session of one device: what a frame adds to it, and what its end amounts to.

#include <algorithm>
#include <string>

#include "base/log_text.hpp"
#include "config/conflict_checker.hpp"
#include "gestures/touch_engine.hpp"
#include "gestures/touch_replay.hpp"
#include "output/gesture_events.hpp"
#include "output/middle_click.hpp"

namespace velotap {
namespace {

// How long the system may take to make a left click of a tap that already became a middle click.
constexpr double kSyntheticClickWindow = 0.5;

FingerCountSet enabledTaps(DeviceClass deviceClass, const Config& config,
                           const SystemPreferences& system) {
  FingerCountSet counts;
  switch (deviceClass) {
    case DeviceClass::magicMouse:
      if (config.isOn(Trigger::mouseTap3)) counts.insert(3);
      break;
    case DeviceClass::trackpad:
      // A tap that the desktop answers is none of ours: no click, and no word about how it went.
      if (config.isOn(Trigger::padTap3) &&
          programAnswers(config.trackpadMode(),
                         system.desktopClicksFor(TrackpadGesture::threeFingerTap))) {
        counts.insert(3);
      }
      if (config.isOn(Trigger::padTap4)) counts.insert(4);
      break;
  }
  return counts;
}

std::optional<TapActivity::Outcome> loggedOutcome(TapVerdict verdict, bool nearMiss) {
  using Outcome = TapActivity::Outcome;
  switch (verdict) {
    case TapVerdict::tooLong:
      return nearMiss ? std::optional(Outcome::tooLong) : std::nullopt;
    case TapVerdict::moved:
      return nearMiss ? std::optional(Outcome::moved) : std::nullopt;
    case TapVerdict::tooSoon:
      return Outcome::tooSoon;
    case TapVerdict::click:
      return Outcome::click;
    case TapVerdict::pinching:
    case TapVerdict::besidePhysicalClick:
      return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

void TouchEngine::updateTapSession(DeviceState& state, const Fingers& fingers, AppId target) {
  if (!state.sessionStart) {
    const Config& config = services_.config;
    const bool isMouse = state.deviceClass == DeviceClass::magicMouse;
    state.sessionStart = services_.clock.uptime();
    state.targetBundleID = target;
    state.enabledTapFingerCounts =
        enabledTaps(state.deviceClass, config, services_.systemPreferences);
    state.swipeEnabledAtStart = isMouse && config.isOn(Trigger::mouseSwipe3Nav);
    state.tapLimitsAtStart = {.duration = config.maxTapDuration(), .drift = config.maxTapDrift()};
    state.maxFingers = 0;
    state.tapMotion.reset();
    state.trace.clear();
    state.swipe.reset();
    state.sessionConsumedByClick = false;
    // Pinching may have been switched on since the start.
    if (isMouse && wantsPinches()) prepareGestures();
  }
  state.tapMotion.update(fingers);
  state.trace.add(fingers);
  state.maxFingers = std::max(state.maxFingers, static_cast<int>(fingers.size()));
  if (state.swipeEnabledAtStart) state.swipe.update(fingers);
}

void TouchEngine::endSession(DeviceState& state, AppId currentTarget) {
  if (!state.sessionStart) return;
  const double now = services_.clock.uptime();
  const double duration = now - *state.sessionStart;
  state.sessionStart.reset();
  logSessionEnd(state, duration);
  keepPinch(state);
  const bool undisturbed = state.targetBundleID.present() &&
                           state.targetBundleID == currentTarget && !state.sessionConsumedByClick;
  if (undisturbed && !postSwipe(state, currentTarget, duration) &&
      state.enabledTapFingerCounts.contains(state.maxFingers)) {
    finishTap(state, currentTarget, duration, now);
  }
  state.resetFinishedSession();
}

// Whether two fingers pinched is asked of their contacts: the pinch engine ended the gesture with
// the first of them that lifted.
void TouchEngine::keepPinch(const DeviceState& state) {
  const Config& config = services_.config;
  if (state.deviceClass != DeviceClass::magicMouse || state.maxFingers != 2) return;
  if (!config.isOn(Trigger::mousePinchZoom)) return;
  const auto& contacts = state.trace.contacts();
  const ReplayedPinch pinch =
      replayPinch({contacts.begin(), contacts.size()}, 1.0, config.isOn(Trigger::mouseRotate));
  if (pinch.began) services_.activity.keepPinch(state.trace);
}

bool TouchEngine::postSwipe(const DeviceState& state, AppId currentTarget, double duration) {
  if (state.deviceClass != DeviceClass::magicMouse || !state.swipeEnabledAtStart) return false;
  const SwipeVerdict verdict = judgeSwipe(state.swipe, state.maxFingers, duration);
  if (verdict == SwipeVerdict::none || !services_.apps.mayDeliver(currentTarget, false)) {
    return false;
  }
  const bool back = verdict == SwipeVerdict::back;
  const auto shortcut = back ? SynthesizedShortcut::back : SynthesizedShortcut::forward;
  GestureEvents::postKeystroke(services_.events, services_.keyCodes.keyCode(shortcut),
                               kCommandFlag);
  if (services_.log.enabled()) {
    services_.log.line(back ? "3-finger swipe back" : "3-finger swipe forward");
  }
  return true;
}

void TouchEngine::finishTap(const DeviceState& state, AppId currentTarget, double duration,
                            double now) {
  const TapLimits& limits = state.tapLimitsAtStart;
  TapMeasurement tap = {.duration = duration,
                        .drift = state.tapMotion.maxDrift(),
                        .pinching = false,
                        .sinceNatural = now - lastNaturalClick_,
                        .sinceEmulated = now - lastEmulatedClick_};
  tap.pinching = services_.pinch.isPinching();
  const TapVerdict verdict = judgeTap(tap, limits);
  if (verdict == TapVerdict::click && !services_.apps.mayDeliver(currentTarget, true)) return;
  const auto outcome = loggedOutcome(verdict, isNearMiss(tap, limits));
  if (!outcome) return;
  services_.activity.record({.id = 0,
                             .date = services_.clock.date(),
                             .deviceClass = state.deviceClass,
                             .fingers = state.maxFingers,
                             .duration = duration,
                             .drift = tap.drift,
                             .maxDuration = limits.duration,
                             .maxDrift = limits.drift,
                             .outcome = *outcome},
                            state.trace, now, tap.sinceNatural);
  if (verdict != TapVerdict::click) return;
  lastEmulatedClick_ = now;
  if (state.deviceClass == DeviceClass::trackpad && state.maxFingers == 3 &&
      systemDragsWithThreeFingers()) {
    suppressLeftClickUntil_ = now + kSyntheticClickWindow;
  }
  postMiddle(services_.events, services_.log);
}

void TouchEngine::logSessionEnd(const DeviceState& state, double duration) const {
  if (!services_.log.enabled()) return;
  services_.log.line("session end (" + std::string(deviceClassName(state.deviceClass)) +
                     "): maxFingers=" + std::to_string(state.maxFingers) +
                     " duration=" + std::to_string(static_cast<long long>(duration * 1000)) +
                     "ms drift=" + fixedText(state.tapMotion.maxDrift(), 3));
}

bool TouchEngine::systemDragsWithThreeFingers() const {
  return ConflictChecker::isEnabled(services_.systemPreferences, "TrackpadThreeFingerDrag",
                                    kTrackpadDomains);
}

}  // namespace velotap
