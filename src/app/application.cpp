#include "app/application.hpp"

#include <utility>

#include "config/settings_keys.hpp"
#include "input/multitouch_binding.hpp"
#include "output/shortcut_key_codes.hpp"
#include "platform/platform.hpp"
#include "platform/shell_platform.hpp"
#include "shell/mail_link.hpp"
#include "shell/uuid.hpp"

namespace velotap {
namespace {

UpdateActions updateActions() {
  return {.unavailableReason = [] { return ShellPlatform::current().updates.unavailableReason(); },
          .check = [] { Updater::shared().checkForUpdates(); }};
}

}  // namespace

Application::Application(Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      conflicts_(Platform::current().systemPreferences, DefaultsStore::shared(),
                 Platform::current().mainQueue, Platform::current().alerts, surroundings_.localize),
      crashReporter_(crashSurroundings()),
      onboarding_(Permissions::shared(), AccessibilityAnnouncements::shared(), onboardingEffects(),
                  surroundings_.localize, surroundings_.variant),
      trayMenu_(
          trayServices(), surroundings_.effects, [this] { onboarding_.show(); },
          surroundings_.localize),
      mainMenu_(surroundings_.effects, updateActions(), surroundings_.localize,
                surroundings_.showMainMenu),
      watcher_(Platform::current().clock, Platform::current().mainQueue,
               Platform::current().notices, Platform::current().log),
      delegate_(steps(), surroundings_.localize) {
  Controller::shared().closures.didChangeState = [this] { trayMenu_.updateIcon(); };
}

Application::~Application() {
  Permissions::shared().stopMonitoring();
  Controller::shared().closures.didChangeState = {};
}

CrashReporter::Surroundings Application::crashSurroundings() const {
  auto ask = surroundings_.offerCrashReport;
  if (!ask) {
    ask = [](const AlertRequest& request) { return Platform::current().alerts.runModal(request); };
  }
  return {.crashDir = ShellPlatform::current().crashFolder,
          .version = surroundings_.version,
          .supportAddress = std::string(supportAddress()),
          .now = [] { return Platform::current().clock.date(); },
          .uuid = &freshUuid,
          .ask = std::move(ask),
          .openUrl =
              [](const std::string& url, UrlOpener::Outcome outcome) {
                ShellPlatform::current().urls.open(url, std::move(outcome));
              },
          .localize = surroundings_.localize};
}

TrayMenu::Services Application::trayServices() {
  return {.controller = Controller::shared(),
          .config = Config::shared(),
          .apps = AppTracker::shared(),
          .conflicts = conflicts_,
          .permissions = Permissions::shared(),
          .loginItem = LoginItem::shared(),
          .updates = updateActions(),
          .unknownApplication = surroundings_.unknownApplication,
          .announcements = AccessibilityAnnouncements::shared(),
          .alerts = Platform::current().alerts,
          .log = Platform::current().log};
}

Onboarding::Effects Application::onboardingEffects() const {
  return {.openTrustSettings = [] { return ShellPlatform::current().trustPrompt.openSettings(); },
          .revealProgram = [] { return ShellPlatform::current().trustPrompt.revealProgram(); },
          .leftClickToggles =
              [] { return DefaultsStore::shared().boolean(keys::kLeftClickTogglesEnabled); },
          .application = surroundings_.effects};
}

AppDelegate::Steps Application::steps() {
  AppDelegate::Steps steps;
  addLaunchSteps(steps);
  addControllerSteps(steps);
  return steps;
}

void Application::addLaunchSteps(AppDelegate::Steps& steps) {
  const auto orNothing = [](std::function<void()> action) {
    return action ? std::move(action) : std::function<void()>([] {});
  };
  steps.installMainMenu = [this] { mainMenu_.install(); };
  steps.observeRegionalSettings = surroundings_.observeRegionalSettings;
  steps.refreshLocalizedLabels = orNothing(surroundings_.refreshLocalizedLabels);
  steps.retitleOnboarding = [this] { onboarding_.refreshTitle(); };
  steps.updateIcon = [this] { trayMenu_.updateIcon(); };
  steps.multitouchAvailable = [] { return MT::shared().isAvailable(); };
  steps.showAlert = [](const AlertRequest& alert) { Platform::current().alerts.runModal(alert); };
  steps.terminate = surroundings_.effects.terminate;
  steps.installCrashReporter = [this] { crashReporter_.install(); };
  steps.startKeyCodes = [] { ShortcutKeyCodes::shared().start(); };
  steps.startAppTracker = [] { AppTracker::shared().start(); };
  steps.setUpTray = [this] { trayMenu_.setup(); };
  steps.createUpdater = [] { static_cast<void>(Updater::shared()); };
  steps.showOnboarding = [this] { onboarding_.show(); };
  steps.offerPendingReports = [this] { crashReporter_.offerPendingReports(); };
  steps.startWatcher = [this](std::function<void()> onPause, std::function<void()> onChange) {
    watcher_.start(std::move(onPause), std::move(onChange));
  };
  steps.onboardingVisible = [this] { return onboarding_.isVisible(); };
  steps.bringOnboardingToFront = [this] { onboarding_.bringToFront(); };
  steps.openSettings = surroundings_.effects.openSettings;
}

void Application::addControllerSteps(AppDelegate::Steps& steps) const {
  steps.enabled = [] { return Config::shared().enabled(); };
  steps.takeInitialPresentation = [explains = surroundings_.explainsPermission](bool enabled) {
    return explains && Permissions::shared().takeInitialPresentation(enabled);
  };
  steps.startMonitoring = [](std::function<void(bool)> onChange) {
    Permissions::shared().startMonitoring(std::move(onChange));
  };
  steps.observeSettings = [](std::function<void()> changed) {
    return DefaultsStore::shared().observeChanges(std::move(changed));
  };
  steps.stopMonitoring = [] { Permissions::shared().stopMonitoring(); };
  steps.refreshPermissions = [] { Permissions::shared().refresh(); };
  steps.startController = [] { Controller::shared().start(); };
  steps.restartController = [] { Controller::shared().restart(); };
  steps.stopController = [] { Controller::shared().stop(); };
  steps.listenersRunning = [] { return Controller::shared().isRunning(); };
}

}  // namespace velotap
