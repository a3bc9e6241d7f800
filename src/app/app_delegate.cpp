#include "app/app_delegate.hpp"

#include <utility>

namespace velotap {

AppDelegate::AppDelegate(Steps initial, Localize localize)
    : steps(std::move(initial)), localize_(std::move(localize)) {}

void AppDelegate::applicationDidFinishLaunching() {
  steps.installMainMenu();
  observeRegionalSettings();
  if (!steps.multitouchAvailable()) {
    steps.showAlert({.message = localize_("MultitouchSupport unavailable"),
                     .informativeText = localize_("multitouch.unavailable.body"),
                     .buttons = {localize_("OK")}});
    steps.terminate();
    return;
  }
  startServices();
}

void AppDelegate::observeRegionalSettings() {
  regionalObservation_ = steps.observeRegionalSettings([this] {
    steps.installMainMenu();
    steps.refreshLocalizedLabels();
    steps.retitleOnboarding();
    steps.updateIcon();
  });
}

void AppDelegate::startServices() {
  steps.installCrashReporter();
  steps.startKeyCodes();
  steps.startAppTracker();
  steps.setUpTray();
  steps.updateIcon();
  steps.createUpdater();
  if (steps.takeInitialPresentation(steps.enabled())) steps.showOnboarding();
  steps.offerPendingReports();
  steps.startWatcher([this] { steps.stopController(); }, [this] { steps.restartController(); });
  settingsObservation_ = steps.observeSettings([this] { enabledMayHaveChanged(); });
  steps.startMonitoring([this](bool granted) {
    if (granted) {
      steps.startController();
    } else {
      steps.stopController();
    }
  });
}

// The settings window, and whoever else writes the settings, only switches; stopping is done here.
void AppDelegate::enabledMayHaveChanged() {
  if (!steps.enabled() && steps.listenersRunning()) steps.stopController();
}

void AppDelegate::applicationDidBecomeActive() {
  steps.refreshPermissions();
  steps.startController();
}

bool AppDelegate::applicationShouldHandleReopen() {
  steps.refreshPermissions();
  if (steps.onboardingVisible()) {
    steps.bringOnboardingToFront();
  } else {
    steps.openSettings(SettingsPane::general);
  }
  return false;
}

void AppDelegate::applicationWillTerminate() {
  steps.stopMonitoring();
  steps.stopController();
}

}  // namespace velotap
