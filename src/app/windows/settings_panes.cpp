#include "app/windows/settings_panes.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "config/settings_keys.hpp"
#include "gestures/tap_activity_log.hpp"
#include "gestures/touch_engine.hpp"
#include "localization/system_regional_settings.hpp"
#include "platform/platform.hpp"
#include "platform/shell_platform.hpp"
#include "settings/window/about_object.hpp"
#include "settings/window/apps_object.hpp"
#include "settings/window/general_object.hpp"
#include "settings/window/gestures_object.hpp"
#include "settings/window/practice_object.hpp"
#include "settings/window/tuning_object.hpp"
#include "shell/updater.hpp"

namespace velotap {
namespace {

std::string localize(std::string_view key) {
  return SystemRegionalSettings::shared().texts()(key);
}

std::int64_t secondsOf(std::chrono::system_clock::time_point moment) {
  return std::chrono::duration_cast<std::chrono::seconds>(moment.time_since_epoch()).count();
}

DefaultsStore& defaults() {
  return DefaultsStore::shared();
}

void openUrl(const std::string& url, UrlOpener::Outcome outcome) {
  ShellPlatform::current().urls.open(url, std::move(outcome));
}

}  // namespace

SettingsPanes::SettingsPanes(Application& application, Desktop desktop,
                             std::function<void(PreferencesTab)> show)
    : application_(application),
      desktop_(std::move(desktop)),
      show_(std::move(show)),
      selection_(defaults()) {}

Texts SettingsPanes::texts() {
  return SystemRegionalSettings::shared().texts();
}

SettingsWindow::Effects SettingsPanes::effects(const QString& frameFile) {
  return {.texts = [] { return texts(); },
          .makePanes = [this](PanesObject& panes) { make(panes); },
          .observe =
              [](const std::function<void()>& changed) {
                std::vector<Observation> observations;
                observations.push_back(defaults().observeChanges(changed));
                observations.push_back(
                    Controller::shared().observeRunning([changed](bool) { changed(); }));
                observations.push_back(
                    Permissions::shared().observeGranted([changed](bool) { changed(); }));
                observations.push_back(Updater::shared().observe(changed));
                return observations;
              },
          .frameFile = frameFile};
}

GeneralFacts SettingsPanes::generalFacts() const {
  Updater& updater = Updater::shared();
  const auto lastCheck = updater.lastCheck();
  return {.enabled = Config::shared().enabled(),
          .leftClickTogglesEnabled = defaults().boolean(keys::kLeftClickTogglesEnabled),
          .hideStatusBarIcon = defaults().boolean(keys::kHideStatusBarIcon),
          .accessibilityGranted = Permissions::shared().granted(),
          .listenersRunning = Controller::shared().isRunning(),
          .connectedDevices = TouchEngine::shared().connectedDeviceClasses(),
          .loginItemStatus = LoginItem::shared().status(),
          .automaticUpdateChecks = updater.automaticallyChecks(),
          .updatesUnavailable = updater.unavailableReason(),
          .lastUpdateCheck = lastCheck ? std::optional(secondsOf(*lastCheck)) : std::nullopt,
          .now = secondsOf(Platform::current().clock.date()),
          .desktop = desktop_.facts()};
}

GestureFacts SettingsPanes::gestureFacts() const {
  const DesktopFacts desktop = desktop_.facts();
  GestureFacts facts = {.enabled = Config::shared().enabled(),
                        .accessibilityGranted = Permissions::shared().granted(),
                        .permissionIsSetUpHere = desktop.accessByRule,
                        .listenersRunning = Controller::shared().isRunning(),
                        .connectedDevices = TouchEngine::shared().connectedDeviceClasses()};
  // A mouse that gives no touches could not be handled, were it the only one.
  facts.mouseAvailable = !desktop.mouseWithoutDriver ||
                         std::find(facts.connectedDevices.begin(), facts.connectedDevices.end(),
                                   DeviceClass::magicMouse) != facts.connectedDevices.end();
  if (desktop_.answersTouchpads) {
    const SystemPreferences& system = Platform::current().systemPreferences;
    facts.desktopClicks = DesktopClicks{
        .threeFingerTap = system.desktopClicksFor(TrackpadGesture::threeFingerTap),
        .threeFingerClick = system.desktopClicksFor(TrackpadGesture::threeFingerClick)};
  }
  return facts;
}

void SettingsPanes::setEnabled(bool on) {
  defaults().set(keys::kEnabled, on);
  application_.trayMenu().updateIcon();
}

void SettingsPanes::synchronizeEnabled() {
  synchronizeEnabledState({.refreshPermission = [] { Permissions::shared().refresh(); },
                           .enabled = [] { return Config::shared().enabled(); },
                           .listenersRunning = [] { return Controller::shared().isRunning(); },
                           .startController = [] { Controller::shared().start(); }});
}

// Where the permission is a matter of a rule, the program itself puts it up.
void SettingsPanes::openAccessibilitySettings() {
  if (desktop_.facts().accessByRule) return application_.onboarding().show();
  openUrl(std::string(kAccessibilitySettingsUrl), {});
}

void SettingsPanes::toggleLaunchAtLogin() {
  const auto error = LoginItem::shared().toggle();
  if (!error) return;
  const LoginItemFailure failure = loginItemFailure(*error, texts());
  Platform& platform = Platform::current();
  if (platform.log.enabled()) platform.log.line(failure.logLine);
  platform.alerts.runModal({.message = failure.alertTitle,
                            .informativeText = failure.alertText,
                            .buttons = {failure.dismiss}});
}

BuildFacts SettingsPanes::builtAs() {
  return {.version = VELOTAP_VERSION, .build = VELOTAP_BUILD, .notice = VELOTAP_NOTICE};
}

SupportFacts SettingsPanes::supportFacts() const {
  const Config& config = Config::shared();
  const CenterBand band = config.centerBand();
  return {
      .build = desktop_.build,
      .system = desktop_.system,
      .systemVersion = desktop_.systemVersion,
      .enabled = config.enabled(),
      .accessibilityGranted = Permissions::shared().granted(),
      .tuning = {.maxTapDurationMs = static_cast<int>(std::lround(config.maxTapDuration() * 1000)),
                 .maxTapDrift = config.maxTapDrift(),
                 .pinchSensitivity = config.pinchSensitivity(),
                 .centerMinX = band.lower,
                 .centerMaxX = band.upper},
      .connectedDevices = TouchEngine::shared().connectedDeviceClasses(),
      .ignoredApps = config.ignoredApps().size(),
      .keystrokeZoomApps = config.keystrokeZoomApps().size()};
}

void SettingsPanes::makeLists(PanesObject& panes) {
  panes.apps = new AppsObject({.config = Config::shared(),
                               .applications = desktop_.applications,
                               .options = desktop_.appsOptions(),
                               .ownBundleID = std::string(kSettingsDomain),
                               .texts = [] { return texts(); },
                               .announce =
                                   [](const std::string& text) {
                                     AccessibilityAnnouncements::shared().post(
                                         text, AnnouncementPriority::high);
                                   },
                               .choose = desktop_.chooseApplications,
                               .copy = desktop_.copy,
                               .reveal = desktop_.reveal,
                               .icon = desktop_.icon},
                              &panes);
  panes.about =
      new AboutObject({.texts = [] { return texts(); },
                       .facts = [this] { return supportFacts(); },
                       .canCheckForUpdates = [] { return Updater::shared().canCheckForUpdates(); },
                       .checkForUpdates = [] { Updater::shared().checkForUpdates(); },
                       .contact = {.open = &openUrl, .copy = desktop_.copy},
                       .save = desktop_.save,
                       .notices = desktop_.notices},
                      &panes);
}

void SettingsPanes::make(PanesObject& panes) {
  const auto words = [] { return texts(); };
  panes.general = new GeneralObject(
      {.texts = words,
       .facts = [this] { return generalFacts(); },
       .showPane = [this](PreferencesTab tab) { show_(tab); },
       .chooseDevice = [this](GestureDevice device) { selection_.setDevice(device); },
       .setEnabled = [this](bool on) { setEnabled(on); },
       .synchronizeEnabled = &SettingsPanes::synchronizeEnabled,
       .setUpAccessibility = [this] { application_.onboarding().show(); },
       .startListeners = [] { Controller::shared().start(); },
       .toggleLaunchAtLogin = &SettingsPanes::toggleLaunchAtLogin,
       .openLoginItems = [] { LoginItem::shared().openSettings(); },
       .setLeftClickToggles = [](bool on) { defaults().set(keys::kLeftClickTogglesEnabled, on); },
       .setHideIcon =
           [this](bool on) {
             defaults().set(keys::kHideStatusBarIcon, on);
             application_.trayMenu().applyVisibility();
           },
       .setAutomaticChecks = [](bool on) { Updater::shared().setAutomaticallyChecks(on); },
       .checkForUpdates = [] { Updater::shared().checkForUpdates(); }},
      &panes);
  panes.gestures = new GesturesObject(
      defaults(), selection_,
      {.texts = words,
       .facts = [this] { return gestureFacts(); },
       .openAccessibilitySettings = [this] { openAccessibilitySettings(); },
       .startListeners = [] { Controller::shared().start(); },
       .showGeneral = [this] { show_(PreferencesTab::general); },
       .didEnable =
           [this](std::string_view key) { application_.conflicts().checkAfterEnabling(key); }},
      &panes);
  panes.tuning = new TuningObject({.defaults = defaults(),
                                   .log = TapActivityLog::shared(),
                                   .notifications = Platform::current().notifications,
                                   .texts = words,
                                   .announce =
                                       [](std::string_view key) {
                                         AccessibilityAnnouncements::shared().post(
                                             localize(key), AnnouncementPriority::high);
                                       },
                                   .showGestures = [this] { show_(PreferencesTab::gestures); }},
                                  &panes);
  makeLists(panes);
  panes.practice = new PracticeObject({.target = PracticeTarget::shared(),
                                       .texts = words,
                                       .showGeneral = [this] { show_(PreferencesTab::general); },
                                       .showGestures = [this] { show_(PreferencesTab::gestures); },
                                       .showTuning = [this] { show_(PreferencesTab::tuning); }},
                                      &panes);
}

}  // namespace velotap
