#include "settings/capture/fixture.hpp"

#include <array>
#include <utility>

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

// A day on which nothing happened: 12 March 2024, 10:42 universal time.
constexpr std::int64_t kNow = 1'710'240'120;
constexpr std::int64_t kTwoDays = 2 * 86'400;

WindowObject* windowOf(PanesObject& panes) {
  return qobject_cast<WindowObject*>(panes.window);
}

void show(PanesObject& panes, PreferencesTab tab) {
  if (WindowObject* window = windowOf(panes)) window->choose(tab);
}

void fill(DefaultsStore& defaults) {
  for (const char* key : {"mouseClick1Center", "mouseClick3", "mouseTap3", "mousePinchZoom",
                          "padClick3", "padTap3"}) {
    defaults.set(key, true);
  }
  for (const char* key : {"mouseClick2", "mouseRotate", "mouseSwipe3Nav", "padTap4"}) {
    defaults.set(key, false);
  }
  defaults.set("maxTapDurationMs", 300);
  defaults.set("maxTapDrift", 0.05);
  defaults.set("pinchSensitivity", 1.2);
  defaults.set("centerMinX", 0.35);
  defaults.set("centerMaxX", 0.65);
  defaults.set("ignoredApps", Value::strings({"com.apple.Safari", "com.apple.TextEdit"}));
}

}  // namespace

ValueMap MemoryPreferences::load(std::string_view domain) {
  const auto found = domains_.find(domain);
  return found == domains_.end() ? ValueMap() : found->second;
}

bool MemoryPreferences::store(std::string_view domain, const ValueMap& values) {
  domains_.insert_or_assign(std::string(domain), values);
  return true;
}

Observation MemoryPreferences::observe(std::string_view, std::function<void()>) {
  return {};
}

std::shared_ptr<DelayedWork> ImmediateQueue::asyncAfter(double, Task task) {
  task();
  return nullptr;
}

Fixture::Fixture(std::string locale)
    : locale_(std::move(locale)),
      defaults_(storage_, log_, kFixtureDomain),
      config_(defaults_, notifications_),
      selection_(defaults_),
      taps_(queue_, notifications_),
      touches_(taps_) {
  fill(defaults_);
  recordTaps();
  generalFacts.accessibilityGranted = true;
  generalFacts.listenersRunning = true;
  generalFacts.connectedDevices = {DeviceClass::magicMouse};
  generalFacts.loginItemStatus = LoginItemStatus::enabled;
  generalFacts.automaticUpdateChecks = true;
  generalFacts.lastUpdateCheck = kNow - kTwoDays;
  generalFacts.now = kNow;
  gestureFacts.connectedDevices = generalFacts.connectedDevices;
}

std::string Fixture::language() const {
  const std::array<std::string, 1> preferred{locale_};
  return Localization::shared().language(preferred);
}

Texts Fixture::texts() const {
  const std::array<std::string, 1> preferred{locale_};
  return {Localization::shared().bundle(preferred), RegionalFormat(locale_)};
}

GeneralEffects Fixture::generalEffects(PanesObject& panes) {
  return {.texts = [this] { return texts(); },
          .facts = [this] { return generalFacts; },
          .showPane = [&panes](PreferencesTab tab) { show(panes, tab); },
          .chooseDevice = [this](GestureDevice device) { selection_.setDevice(device); },
          .setEnabled = [this](bool on) { generalFacts.enabled = on; },
          .setUpAccessibility = [this] { generalFacts.accessibilityGranted = true; },
          .startListeners = [this] { generalFacts.listenersRunning = true; },
          .toggleLaunchAtLogin =
              [this] {
                generalFacts.loginItemStatus =
                    generalFacts.loginItemStatus == LoginItemStatus::enabled
                        ? LoginItemStatus::notRegistered
                        : LoginItemStatus::enabled;
              },
          .openLoginItems = [] {},
          .setLeftClickToggles = [this](bool on) { generalFacts.leftClickTogglesEnabled = on; },
          .setHideIcon = [this](bool on) { generalFacts.hideStatusBarIcon = on; },
          .setAutomaticChecks = [this](bool on) { generalFacts.automaticUpdateChecks = on; },
          .checkForUpdates = [this] { generalFacts.lastUpdateCheck = generalFacts.now; }};
}

GesturesEffects Fixture::gesturesEffects(PanesObject& panes) {
  return {.texts = [this] { return texts(); },
          .facts = [this] { return gestureFacts; },
          .openAccessibilitySettings = [] {},
          .startListeners = [] {},
          .showGeneral = [&panes] { show(panes, PreferencesTab::general); },
          .didEnable = nullptr};
}

PracticeEffects Fixture::practiceEffects(PanesObject& panes) const {
  return {.texts = [this] { return texts(); },
          .setTarget = [](std::optional<Rect>) {},
          .showGeneral = [&panes] { show(panes, PreferencesTab::general); },
          .showGestures = [&panes] { show(panes, PreferencesTab::gestures); },
          .showTuning = [&panes] { show(panes, PreferencesTab::tuning); }};
}

TuningEffects Fixture::tuningEffects(PanesObject& panes) {
  return {.defaults = defaults_,
          .log = taps_,
          .notifications = notifications_,
          .touches = touches_,
          .texts = [this] { return texts(); },
          .announce = [](std::string_view) {},
          .showGestures = [&panes] { show(panes, PreferencesTab::gestures); }};
}

// One tap of every outcome, and a few that worked.
void Fixture::recordTaps() {
  struct Tap {
    std::int64_t secondsAgo;
    DeviceClass device;
    int fingers;
    double duration;
    double drift;
    TapActivity::Outcome outcome;
  };
  using Outcome = TapActivity::Outcome;
  constexpr std::array<Tap, 6> kTaps{{
      {96, DeviceClass::trackpad, 3, 0.117, 0.004, Outcome::click},
      {71, DeviceClass::magicMouse, 3, 0.142, 0.061, Outcome::moved},
      {52, DeviceClass::magicMouse, 3, 0.128, 0.012, Outcome::click},
      {51, DeviceClass::magicMouse, 3, 0.094, 0.010, Outcome::tooSoon},
      {24, DeviceClass::magicMouse, 3, 0.341, 0.018, Outcome::tooLong},
      {9, DeviceClass::magicMouse, 3, 0.156, 0.021, Outcome::click},
  }};
  for (const Tap& tap : kTaps) {
    taps_.record({.id = 0,
                  .date = std::chrono::system_clock::time_point(
                      std::chrono::seconds(kNow - tap.secondsAgo)),
                  .deviceClass = tap.device,
                  .fingers = tap.fingers,
                  .duration = tap.duration,
                  .drift = tap.drift,
                  .maxDuration = 0.3,
                  .maxDrift = 0.05,
                  .outcome = tap.outcome});
  }
}

void Fixture::makePanes(PanesObject& panes) {
  panes.general = new GeneralObject(generalEffects(panes), &panes);
  panes.gestures = new GesturesObject(defaults_, selection_, gesturesEffects(panes), &panes);
  panes.tuning = new TuningObject(tuningEffects(panes), &panes);
  panes.practice = new PracticeObject(practiceEffects(panes), &panes);
}

}  // namespace velotap
