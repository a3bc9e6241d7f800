#include "app/macos/mac_application.hpp"

#include <utility>

#include "app/macos/native_menus.hpp"
#include "config/defaults_store.hpp"
#include "input/multitouch_binding.hpp"
#include "localization/system_regional_settings.hpp"
#include "output/shortcut_key_codes.hpp"
#include "platform/platform.hpp"
#include "platform/shell_platform.hpp"
#include "shell/mail_link.hpp"
#include "shell/updater.hpp"
#include "shell/uuid.hpp"

namespace velotap {
namespace {

std::string localized(std::string_view key) {
  return SystemRegionalSettings::shared().texts()(key);
}

UpdateActions updateActions() {
  return {.unavailableReason = [] { return ShellPlatform::current().updates.unavailableReason(); },
          .check = [] { Updater::shared().checkForUpdates(); }};
}

Onboarding::Effects onboardingEffects(const ApplicationEffects& application) {
  return {
      .openTrustSettings = [] { return ShellPlatform::current().trustPrompt.openSettings(); },
      .revealProgram = [] { return ShellPlatform::current().trustPrompt.revealProgram(); },
      .leftClickToggles = [] { return DefaultsStore::shared().boolean("leftClickTogglesEnabled"); },
      .application = application};
}

TrayMenu::Services trayServices(const UpdateActions& updates, ConflictChecker& conflicts) {
  return {.controller = Controller::shared(),
          .config = Config::shared(),
          .apps = AppTracker::shared(),
          .conflicts = conflicts,
          .permissions = Permissions::shared(),
          .loginItem = LoginItem::shared(),
          .updates = updates,
          .announcements = AccessibilityAnnouncements::shared(),
          .alerts = Platform::current().alerts,
          .log = Platform::current().log};
}

CrashReporter::Surroundings crashSurroundings() {
  return {
      .crashDir = ShellPlatform::current().crashFolder,
      .version = VELOTAP_VERSION,
      .supportAddress = std::string(supportAddress()),
      .now = [] { return Platform::current().clock.date(); },
      .uuid = &freshUuid,
      .ask =
          [](const AlertRequest& request) { return Platform::current().alerts.runModal(request); },
      .openUrl = [](const std::string& url) { return ShellPlatform::current().urls.open(url); },
      .localize = &localized};
}

}  // namespace

MacApplication::MacApplication(NativeMenuBar& menuBar, NativeStatusItem& statusItem,
                               MacApplicationEffects effects)
    : menuBar_(menuBar),
      statusItem_(statusItem),
      effects_(std::move(effects)),
      updates_(updateActions()),
      conflicts_(Platform::current().systemPreferences, DefaultsStore::shared(),
                 Platform::current().mainQueue, Platform::current().alerts, &localized),
      crashes_(crashSurroundings()),
      onboarding_(Permissions::shared(), AccessibilityAnnouncements::shared(),
                  onboardingEffects(effects_.application), &localized),
      tray_(
          trayServices(updates_, conflicts_), effects_.application, [this] { onboarding_.show(); },
          &localized),
      mainMenu_(effects_.application, updates_, &localized,
                [this](const std::vector<MenuItem>& menus) { menuBar_.show(nativeMenu(menus)); }),
      watcher_(Platform::current().clock, Platform::current().mainQueue,
               Platform::current().notices, Platform::current().log),
      delegate_(steps(), &localized) {
  onboarding_.setView(effects_.onboarding);
  tray_.setView(nativeTrayView(statusItem_, [this](const std::optional<StatusItemClick>& click) {
    tray_.statusItemClicked(click);
  }));
  Controller::shared().closures.didChangeState = [this] { tray_.updateIcon(); };
}

AppDelegate::Steps MacApplication::steps() {
  AppDelegate::Steps steps;
  addLaunchSteps(steps);
  addLifeSteps(steps);
  return steps;
}

void MacApplication::addLaunchSteps(AppDelegate::Steps& steps) {
  steps.installMainMenu = [this] { mainMenu_.install(); };
  steps.observeRegionalSettings = [](std::function<void()> changed) {
    return SystemRegionalSettings::shared().observeRevision(std::move(changed));
  };
  steps.refreshLocalizedLabels = effects_.refreshSettingsLabels;
  steps.retitleOnboarding = [this] { onboarding_.refreshTitle(); };
  steps.updateIcon = [this] { tray_.updateIcon(); };
  steps.multitouchAvailable = [] { return MT::shared().isAvailable(); };
  steps.showAlert = [](const AlertRequest& request) {
    Platform::current().alerts.runModal(request);
  };
  steps.terminate = effects_.application.terminate;
  steps.installCrashReporter = [this] {
    crashes_.install();
    effects_.recordUncaughtExceptions(crashes_.logPath());
  };
  steps.startKeyCodes = [] { ShortcutKeyCodes::shared().start(); };
  steps.startAppTracker = [] { AppTracker::shared().start(); };
  steps.setUpTray = [this] { tray_.setup(); };
  steps.createUpdater = [] { static_cast<void>(Updater::shared()); };
  steps.takeInitialPresentation = [](bool enabled) {
    return Permissions::shared().takeInitialPresentation(enabled);
  };
  steps.showOnboarding = [this] { onboarding_.show(); };
  steps.offerPendingReports = [this] { crashes_.offerPendingReports(); };
  steps.startWatcher = [this](std::function<void()> onPause, std::function<void()> onChange) {
    watcher_.start(std::move(onPause), std::move(onChange));
  };
  steps.startMonitoring = [](std::function<void(bool)> onChange) {
    Permissions::shared().startMonitoring(std::move(onChange));
  };
}

void MacApplication::addLifeSteps(AppDelegate::Steps& steps) {
  steps.enabled = [] { return DefaultsStore::shared().boolean("enabled"); };
  steps.observeSettings = [](std::function<void()> changed) {
    return DefaultsStore::shared().observeChanges(std::move(changed));
  };
  steps.stopMonitoring = [] { Permissions::shared().stopMonitoring(); };
  steps.refreshPermissions = [] { Permissions::shared().refresh(); };
  steps.startController = [] { Controller::shared().start(); };
  steps.restartController = [] { Controller::shared().restart(); };
  steps.stopController = [] { Controller::shared().stop(); };
  steps.listenersRunning = [] { return Controller::shared().isRunning(); };
  steps.onboardingVisible = [this] { return onboarding_.isVisible(); };
  steps.bringOnboardingToFront = [this] { onboarding_.bringToFront(); };
  steps.openSettings = effects_.application.openSettings;
}

}  // namespace velotap
