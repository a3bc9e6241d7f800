#include "gestures/pinch_engine.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "base/log_text.hpp"
#include "output/gesture_events.hpp"
#include "platform/platform.hpp"

namespace velotap {
namespace {

// More gesture mice than anybody connects; a further one only costs the list one growth.
constexpr std::size_t kExpectedDevices = 8;

// The frame's fingers that are firm enough to pinch with: how many, and the first two of them.
struct FirmContacts {
  std::size_t count = 0;
  std::array<const Finger*, 2> firstTwo{};
  bool hasBoth = false;  ///< of the two identifiers that were asked for
};

FirmContacts firmContacts(const Fingers& fingers, std::int32_t id1, std::int32_t id2) {
  FirmContacts firm;
  int found = 0;
  for (const Finger& finger : fingers) {
    if (!isPinchContact(finger)) continue;
    if (firm.count < firm.firstTwo.size()) firm.firstTwo[firm.count] = &finger;
    if (finger.id == id1 || finger.id == id2) ++found;
    ++firm.count;
  }
  firm.hasBoth = found == 2;  // identifiers are unique within a frame
  return firm;
}

}  // namespace

PinchEngine::PinchEngine(const Config& config, const AppTracker& apps,
                         const ShortcutKeyCodes& keyCodes, EventStream& events, DiagnosticLog& log)
    : config_(config), apps_(apps), keyCodes_(keyCodes), events_(events), log_(log) {
  entries_.reserve(kExpectedDevices);
}

PinchEngine& PinchEngine::shared() {
  static PinchEngine instance(Config::shared(), AppTracker::shared(), ShortcutKeyCodes::shared(),
                              Platform::current().events, Platform::current().log);
  return instance;
}

// Runs with every frame of a gesture, so what it calls is taken into it, whoever else calls it too.
[[gnu::flatten]] void PinchEngine::process(MTDevice device, const Fingers& fingers,
                                           const Context& context) {
  const std::lock_guard guard(lock_);
  DeviceEntry& entry = entryLocked(device);
  const std::size_t n = fingers.size();
  if (entry.blockedUntilLift) {
    if (n == 0) entry.blockedUntilLift = false;
    return;
  }
  if (n == 0) {
    endLocked(entry, false, true);
    return;
  }
  const FirmContacts firm = entry.tracking
                                ? firmContacts(fingers, entry.tracking->id1, entry.tracking->id2)
                                : firmContacts(fingers, 0, 0);
  if (entry.tracking && !firm.hasBoth) {
    cancelLocked(entry);
    return;
  }
  if (n != 2 || firm.count != 2) {
    if (n >= 3 || entry.tracking) cancelLocked(entry);
    return;
  }
  const PinchPair pair = measurePair(*firm.firstTwo[0], *firm.firstTwo[1]);
  if (entry.tracking) {
    advanceLocked(entry, pair, context);
  } else {
    entry.tracking = beginTracking(pair, context.bundleID);
  }
}

void PinchEngine::suspend(MTDevice device, bool fingersDown) {
  const std::lock_guard guard(lock_);
  DeviceEntry& entry = entryLocked(device);
  endLocked(entry, true, true);
  entry.blockedUntilLift = fingersDown;
}

bool PinchEngine::isPinching() const {
  const std::lock_guard guard(lock_);
  return std::any_of(entries_.begin(), entries_.end(), [](const DeviceEntry& entry) {
    return entry.tracking &&
           (entry.tracking->mode == Mode::pinching || entry.tracking->mode == Mode::rotating);
  });
}

void PinchEngine::cancelAll() {
  const std::lock_guard guard(lock_);
  for (DeviceEntry& entry : entries_) endLocked(entry, true, true);
}

PinchEngine::DeviceEntry& PinchEngine::entryLocked(MTDevice device) {
  for (DeviceEntry& entry : entries_) {
    if (entry.device == device) return entry;
  }
  // An entry that holds nothing may serve another device: devices come and go for years.
  const auto idle = std::find_if(entries_.begin(), entries_.end(), [](const DeviceEntry& e) {
    return !e.tracking && !e.blockedUntilLift;
  });
  if (idle != entries_.end()) {
    idle->device = device;
    return *idle;
  }
  return entries_.emplace_back(DeviceEntry{.device = device, .tracking = {}});
}

PinchEngine::Tracking PinchEngine::beginTracking(const PinchPair& pair, AppId target) {
  return {.id1 = pair.id1,
          .id2 = pair.id2,
          .baseDistance = pair.distance,
          .baseCentroid = pair.midpoint,
          .magnification = {.lastDistance = pair.distance, .smoothed = 0},
          .lastAngle = pair.angle(),
          .mode = pair.acceptable ? Mode::idle : Mode::rejected,
          .targetBundleID = target,
          .eventLocation = {}};
}

void PinchEngine::advanceLocked(DeviceEntry& entry, const PinchPair& pair, const Context& context) {
  Tracking& tracking = *entry.tracking;
  if (tracking.mode == Mode::rejected) return;
  if (context.bundleID != tracking.targetBundleID) {
    cancelLocked(entry);
    return;
  }
  if (!apps_.mayDeliver(tracking.targetBundleID, false)) {
    endLocked(entry, true, false);
    entry.blockedUntilLift = true;
    return;
  }
  if (!settingStillOn(tracking.mode)) {
    cancelLocked(entry);
    return;
  }
  switch (tracking.mode) {
    case Mode::idle:
      turn(tracking, pair);
      judgeIdleLocked(tracking, pair, context);
      break;
    case Mode::pinching:
      // Never rotates any more, so nobody needs the angle.
      pinchStepLocked(tracking, pair.distance);
      break;
    case Mode::rotating:
      post(tracking, GestureKind::rotate, GesturePhase::changed, turn(tracking, pair));
      break;
    case Mode::rejected:
      break;
  }
}

double PinchEngine::turn(Tracking& tracking, const PinchPair& pair) noexcept {
  const double angle = pair.angle();
  const double turned = angleChange(tracking.lastAngle, angle);
  tracking.lastAngle = angle;
  tracking.totalRotation += turned;
  return turned;
}

void PinchEngine::judgeIdleLocked(Tracking& tracking, const PinchPair& pair,
                                  const Context& context) {
  const PinchMovement movement = {
      .centroidTravel = distanceBetween(pair.midpoint, tracking.baseCentroid),
      .distanceChange = std::abs(pair.distance - tracking.baseDistance),
      .totalRotation = tracking.totalRotation};
  switch (judgeOnset(movement, config_.isOn(Trigger::mousePinchZoom),
                     config_.isOn(Trigger::mouseRotate))) {
    case PinchOnset::none:
      break;
    case PinchOnset::reject:
      tracking.mode = Mode::rejected;
      break;
    case PinchOnset::pinch:
      tracking.mode = Mode::pinching;
      tracking.magnification = {.lastDistance = pair.distance, .smoothed = 0};
      tracking.useKeystrokes = context.usesKeystrokeZoom;
      tracking.keystrokeAccumulator = 0;
      tracking.eventLocation = pointerLocation();
      if (!tracking.useKeystrokes) {
        post(tracking, GestureKind::magnify, GesturePhase::began, 0);
      }
      if (log_.enabled()) {
        log_.line("pinch began (d0=" + fixedText(tracking.baseDistance, 1) +
                  "mm, keystrokes=" + (tracking.useKeystrokes ? "true" : "false") + ")");
      }
      break;
    case PinchOnset::rotate:
      tracking.mode = Mode::rotating;
      tracking.eventLocation = pointerLocation();
      post(tracking, GestureKind::rotate, GesturePhase::began, 0);
      note("rotate began");
      break;
  }
}

void PinchEngine::pinchStepLocked(Tracking& tracking, double distance) {
  const auto step = tracking.magnification.update(distance, config_.pinchSensitivity());
  if (!step) return;
  if (tracking.useKeystrokes) {
    tracking.keystrokeAccumulator += *step;
    postZoomKeystrokes(takeZoomKeystrokes(tracking.keystrokeAccumulator));
  } else {
    post(tracking, GestureKind::magnify, GesturePhase::changed, *step);
  }
}

bool PinchEngine::settingStillOn(Mode mode) const {
  switch (mode) {
    case Mode::rotating:
      return config_.isOn(Trigger::mouseRotate);
    case Mode::pinching:
      return config_.isOn(Trigger::mousePinchZoom);
    case Mode::idle:
    case Mode::rejected:
      return true;
  }
  return true;
}

void PinchEngine::endLocked(DeviceEntry& entry, bool cancelled, bool postTerminalEvent) {
  if (!entry.tracking) return;
  const Tracking tracking = *entry.tracking;
  entry.tracking.reset();
  const bool rotating = tracking.mode == Mode::rotating;
  if (!rotating && tracking.mode != Mode::pinching) return;
  if (postTerminalEvent && !tracking.useKeystrokes && tracking.eventLocation &&
      apps_.mayDeliver(tracking.targetBundleID, false)) {
    post(tracking, rotating ? GestureKind::rotate : GestureKind::magnify,
         cancelled ? GesturePhase::cancelled : GesturePhase::ended, 0);
  }
  if (rotating) {
    note(cancelled ? "rotate cancelled" : "rotate ended");
  } else {
    note(cancelled ? "pinch cancelled" : "pinch ended");
  }
}

void PinchEngine::cancelLocked(DeviceEntry& entry) {
  endLocked(entry, true, true);
  entry.blockedUntilLift = true;
}

void PinchEngine::post(const Tracking& tracking, GestureKind kind, GesturePhase phase,
                       double value) {
  if (!tracking.eventLocation) return;
  events_.post(GestureEvent{
      .kind = kind, .phase = phase, .value = value, .location = *tracking.eventLocation});
}

void PinchEngine::postZoomKeystrokes(int count) {
  const auto shortcut = count > 0 ? SynthesizedShortcut::zoomIn : SynthesizedShortcut::zoomOut;
  for (int i = std::abs(count); i > 0; --i) {
    GestureEvents::postKeystroke(events_, keyCodes_.keyCode(shortcut), kCommandFlag);
  }
}

Point PinchEngine::pointerLocation() {
  return events_.pointerLocation().value_or(Point{});
}

void PinchEngine::note(const char* text) const {
  if (log_.enabled()) log_.line(text);
}

}  // namespace velotap
