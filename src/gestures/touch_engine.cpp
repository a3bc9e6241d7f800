#include "gestures/touch_engine.hpp"

#include <algorithm>
#include <atomic>
#include <string>

#include "base/log_text.hpp"
#include "output/middle_click.hpp"
#include "platform/platform.hpp"

namespace velotap {
namespace {

// The library's callback carries no context, so the engine that listens is found here.
std::atomic<TouchEngine*> listeningEngine{nullptr};

}  // namespace

TouchEngine::TouchEngine(const Services& services) : services_(services) {}

TouchEngine::~TouchEngine() {
  stop();
  TouchEngine* self = this;
  listeningEngine.compare_exchange_strong(self, nullptr);
}

TouchEngine& TouchEngine::shared() {
  Platform& platform = Platform::current();
  static TouchEngine instance({.multitouch = MT::shared(),
                               .config = Config::shared(),
                               .apps = AppTracker::shared(),
                               .pinch = PinchEngine::shared(),
                               .activity = TapActivityLog::shared(),
                               .keyCodes = ShortcutKeyCodes::shared(),
                               .systemPreferences = platform.systemPreferences,
                               .events = platform.events,
                               .clock = platform.clock,
                               .log = platform.log});
  return instance;
}

bool TouchEngine::start() {
  stop();
  listeningEngine = this;
  MT& multitouch = services_.multitouch;
  std::vector<std::string> descriptions;
  for (const MTDevice device : multitouch.deviceList()) {
    DeviceState state;
    state.deviceClass = classifyDevice(multitouch.familyId(device));
    {
      // The state is there before the first frame can be.
      const std::lock_guard guard(lock_);
      states_.push_back({device, state});
    }
    if (multitouch.startDevice(device, &frameCallback)) {
      devices_.push_back(device);
      if (services_.log.enabled()) descriptions.push_back(multitouch.describe(device));
      continue;
    }
    const std::lock_guard guard(lock_);
    std::erase_if(states_, [device](const Entry& entry) { return entry.device == device; });
  }
  if (services_.log.enabled()) {
    services_.log.line("registered on " + std::to_string(devices_.size()) +
                       " device(s): " + listText(descriptions));
  }
  if (wantsPinches() && hasMouse()) prepareGestures();
  return !devices_.empty();
}

void TouchEngine::stop() {
  for (const MTDevice device : devices_) services_.multitouch.stopDevice(device, &frameCallback);
  devices_.clear();
  gesturesPrepared_ = false;
  services_.pinch.cancelAll();
  bool held = false;
  {
    const std::lock_guard guard(lock_);
    states_.clear();
    held = abandonConversionLocked();
  }
  if (held) postMiddleRelease(services_.events, services_.log);
}

void TouchEngine::frameCallback(MTDevice device, const MTTouch* touches, std::int32_t count,
                                double /*timestamp*/, std::int32_t /*frame*/) {
  if (device == nullptr) return;
  if (TouchEngine* engine = listeningEngine) engine->handleFrame(device, touches, count);
}

DeviceState* TouchEngine::stateLocked(MTDevice device) noexcept {
  for (Entry& entry : states_) {
    if (entry.device == device) return &entry.state;
  }
  return nullptr;
}

// A device without state has nothing to do either.
bool TouchEngine::isIdleLocked(MTDevice device) noexcept {
  const DeviceState* state = stateLocked(device);
  return state == nullptr || (state->processedEmptyFrame && state->count == 0 &&
                              !state->sessionStart && state->readyForContact);
}

void TouchEngine::handleFrame(MTDevice device, const MTTouch* touches, std::ptrdiff_t count) {
  const Fingers fingers = activeFingers(touches, count);
  if (fingers.empty()) {
    // Surfaces go on sending empty frames for a while after the last touch.
    const std::lock_guard guard(lock_);
    if (isIdleLocked(device)) return;
  }
  std::optional<AppTracker::GestureContext> context;
  if (services_.config.enabled()) context = services_.apps.gestureContext();
  bool readyForPinch = false;
  {
    const std::lock_guard guard(lock_);
    DeviceState* state = stateLocked(device);
    if (state == nullptr) return;
    advanceSessionLocked(*state, fingers, context ? context->bundleID : AppId());
    if (state->deviceClass != DeviceClass::magicMouse) return;
    readyForPinch = state->readyForContact && !clickConversion_.heldButton;
  }
  pinchStep(device, fingers, readyForPinch, context);
}

void TouchEngine::advanceSessionLocked(DeviceState& state, const Fingers& fingers,
                                       AppId currentTarget) {
  state.count = static_cast<int>(fingers.size());
  state.processedEmptyFrame = fingers.empty();
  if (fingers.size() == 1) state.singleFingerPos = fingers[0].pos;

  if (fingers.empty()) {
    if (currentTarget && state.targetBundleID == currentTarget) {
      endSession(state, currentTarget);
    } else {
      state.abandonSession();
    }
    state.readyForContact = true;
    return;
  }
  const bool targetLost =
      !currentTarget || (state.targetBundleID.present() && state.targetBundleID != currentTarget);
  if (targetLost) {
    // Nothing may start from fingers that came down before somebody else took the front.
    state.abandonSession();
    state.readyForContact = false;
  } else if (state.readyForContact) {
    updateTapSession(state, fingers, currentTarget);
  }
}

bool TouchEngine::wantsPinches() const noexcept {
  const Config& config = services_.config;
  return config.isOn(Trigger::mousePinchZoom) || config.isOn(Trigger::mouseRotate);
}

bool TouchEngine::hasMouse() const {
  const auto classes = connectedDeviceClasses();
  return std::find(classes.begin(), classes.end(), DeviceClass::magicMouse) != classes.end();
}

// What posts the gestures may need most of a second before the first one, which nobody should wait
// for with two fingers on the mouse.
void TouchEngine::prepareGestures() {
  if (gesturesPrepared_.load(std::memory_order_relaxed)) return;
  if (!gesturesPrepared_.exchange(true)) services_.events.prepareGestures();
}

void TouchEngine::pinchStep(MTDevice device, const Fingers& fingers, bool ready,
                            const std::optional<AppTracker::GestureContext>& context) {
  const Config& config = services_.config;
  const bool wanted = config.isOn(Trigger::mousePinchZoom) || config.isOn(Trigger::mouseRotate);
  if (wanted && ready && context && !context->isPractice) {
    services_.pinch.process(device, fingers, {context->bundleID, context->usesKeystrokeZoom});
  } else {
    services_.pinch.suspend(device, !fingers.empty());
  }
}

std::vector<DeviceClass> TouchEngine::connectedDeviceClasses() const {
  const std::lock_guard guard(lock_);
  std::vector<DeviceClass> classes;
  for (const DeviceClass deviceClass : kAllDeviceClasses) {
    const bool present = std::any_of(
        states_.begin(), states_.end(),
        [deviceClass](const Entry& entry) { return entry.state.deviceClass == deviceClass; });
    if (present) classes.push_back(deviceClass);
  }
  return classes;
}

}  // namespace velotap
