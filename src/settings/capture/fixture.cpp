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

Fixture::Fixture(std::string locale)
    : locale_(std::move(locale)),
      defaults_(storage_, log_, kFixtureDomain),
      config_(defaults_, notifications_),
      selection_(defaults_) {
  fill(defaults_);
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

void Fixture::makePanes(PanesObject& panes) {
  panes.general = new GeneralObject(generalEffects(panes), &panes);
  panes.gestures = new GesturesObject(defaults_, selection_, gesturesEffects(panes), &panes);
  panes.practice = new PracticeObject(practiceEffects(panes), &panes);
}

}  // namespace velotap
