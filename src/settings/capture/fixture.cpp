#include "settings/capture/fixture.hpp"

#include <array>
#include <utility>

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

// A day on which nothing happened: 12 March 2024, 10:42 universal time.
constexpr std::int64_t kNow = 1'710'240'120;
constexpr std::int64_t kTwoDays = 2 * 86'400;
constexpr const char* kNotices =
    "Velotap contains or uses the software below.\n\n=== Example Library ===\n\n"
    "Permission is hereby granted, free of charge, to any person obtaining a copy of this example, "
    "to show it in pictures.\n";

WindowObject* windowOf(PanesObject& panes) {
  return qobject_cast<WindowObject*>(panes.window);
}

void show(PanesObject& panes, PreferencesTab tab) {
  if (WindowObject* window = windowOf(panes)) window->choose(tab);
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

std::optional<ApplicationBundle> FictionalApplications::find(const std::string& bundleId) {
  for (const ApplicationBundle& bundle : installed()) {
    if (bundle.bundleId == bundleId) return bundle;
  }
  return std::nullopt;
}

std::vector<ApplicationBundle> FictionalApplications::installed() {
  std::vector<ApplicationBundle> all = {
      {"com.apple.Safari", "Safari", {}, "/Applications/Safari.app"},
      {"com.apple.TextEdit", "TextEdit", {}, "/Applications/TextEdit.app"},
      {"com.valvesoftware.steam", "Steam", {}, "/Applications/Steam.app"}};
  for (int i = 1; i <= more_; ++i) {
    const std::string number = std::to_string(i);
    all.push_back({"org.example.app" + number, "Example " + number, {}, "/example/" + number});
  }
  return all;
}

std::vector<RunningInstance> FictionalApplications::running() {
  return {{"com.apple.Safari", "Safari"}, {"com.valvesoftware.steam", "Steam"}};
}

Fixture::Fixture(std::string locale, const ValueMap& settings)
    : locale_(std::move(locale)),
      defaults_(storage_, log_, kCaptureSuite),
      config_(defaults_, notifications_),
      selection_(defaults_),
      taps_(queue_, notifications_) {
  for (const auto& [key, value] : settings) defaults_.set(key, value);
  recordCaptureTouches(taps_);
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
          .synchronizeEnabled = [] {},
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

PracticeEffects Fixture::practiceEffects(PanesObject& panes) {
  return {.target = target_,
          .texts = [this] { return texts(); },
          .showGeneral = [&panes] { show(panes, PreferencesTab::general); },
          .showGestures = [&panes] { show(panes, PreferencesTab::gestures); },
          .showTuning = [&panes] { show(panes, PreferencesTab::tuning); }};
}

TuningEffects Fixture::tuningEffects(PanesObject& panes) {
  return {.defaults = defaults_,
          .log = taps_,
          .notifications = notifications_,
          .texts = [this] { return texts(); },
          .announce = [](std::string_view) {},
          .showGestures = [&panes] { show(panes, PreferencesTab::gestures); }};
}

AppsEffects Fixture::appsEffects() {
  return {.config = config_,
          .applications = applications_,
          .options = {.listsInstalled = true},
          .ownBundleID = "app.norwend.velotap",
          .texts = [this] { return texts(); },
          .announce = [](const std::string&) {},
          .choose = [](const std::string&) { return std::vector<std::string>(); },
          .copy = [](const std::string&) { return true; },
          .reveal = [](const std::string&) {},
          .icon = [](const std::string&) { return std::string(); }};
}

AboutEffects Fixture::aboutEffects() {
  return {.texts = [this] { return texts(); },
          .facts =
              [this] {
                return SupportFacts{.build = {.version = "1.0", .build = "100", .notice = {}},
                                    .system = "Linux",
                                    .systemVersion = "12",
                                    .enabled = generalFacts.enabled,
                                    .accessibilityGranted = generalFacts.accessibilityGranted,
                                    .tuning = {},
                                    .connectedDevices = generalFacts.connectedDevices,
                                    .ignoredApps = config_.ignoredApps().size(),
                                    .keystrokeZoomApps = config_.keystrokeZoomApps().size()};
              },
          .canCheckForUpdates = [] { return true; },
          .checkForUpdates = [] {},
          .contact = {.open =
                          [](const std::string&, const std::function<void(bool)>& outcome) {
                            if (outcome) outcome(true);
                          },
                      .copy = [](const std::string&) { return true; }},
          .save = [](std::string_view, const std::string&) { return true; },
          .notices = [] { return std::string(kNotices); }};
}

void Fixture::makePanes(PanesObject& panes) {
  panes.general = new GeneralObject(generalEffects(panes), &panes);
  panes.gestures = new GesturesObject(defaults_, selection_, gesturesEffects(panes), &panes);
  panes.tuning = new TuningObject(tuningEffects(panes), &panes);
  panes.apps = new AppsObject(appsEffects(), &panes);
  panes.about = new AboutObject(aboutEffects(), &panes);
  panes.practice = new PracticeObject(practiceEffects(panes), &panes);
}

}  // namespace velotap
