// What happens when the application launches, comes to the front, is opened again and ends, and in
// which order.
//
// The order is the whole point: crash handlers before anything that could crash, the tray before
// windows, the permission monitor last, because its first delivery is what starts the listeners.
// Every step is a closure, so that a test can write the order down. Main thread.
#pragma once

#include <functional>

#include "app/shell_surroundings.hpp"
#include "base/observer_list.hpp"
#include "platform/alerts.hpp"

namespace velotap {

class AppDelegate {
 public:
  struct Steps {
    std::function<void()> installMainMenu;
    /// Calls back at each change of language or regional format, not for the present one.
    std::function<Observation(std::function<void()>)> observeRegionalSettings;
    std::function<void()> refreshLocalizedLabels;  ///< of the settings window
    std::function<void()> retitleOnboarding;
    std::function<void()> updateIcon;

    std::function<bool()> multitouchAvailable;
    std::function<void(const AlertRequest&)> showAlert;
    std::function<void()> terminate;

    std::function<void()> installCrashReporter;
    std::function<void()> startKeyCodes;
    std::function<void()> startAppTracker;
    std::function<void()> setUpTray;
    std::function<void()> createUpdater;
    std::function<bool()> enabled;
    std::function<bool(bool enabled)> takeInitialPresentation;
    std::function<void()> showOnboarding;
    std::function<void()> offerPendingReports;
    std::function<void(std::function<void()> onPause, std::function<void()> onChange)> startWatcher;
    std::function<void(std::function<void(bool granted)> onChange)> startMonitoring;
    /// Calls back whenever any setting changed.
    std::function<Observation(std::function<void()>)> observeSettings;

    std::function<void()> stopMonitoring;
    std::function<void()> refreshPermissions;
    std::function<void()> startController;
    std::function<void()> restartController;
    std::function<void()> stopController;
    std::function<bool()> listenersRunning;

    std::function<bool()> onboardingVisible;
    std::function<void()> bringOnboardingToFront;
    std::function<void(SettingsPane)> openSettings;
  };

  AppDelegate(Steps steps, Localize localize);

  void applicationDidFinishLaunching();
  void applicationDidBecomeActive();
  /// Opened again while it runs. False: the system is not to do anything about it itself.
  [[nodiscard]] bool applicationShouldHandleReopen();
  void applicationWillTerminate();

  Steps steps;

 private:
  void observeRegionalSettings();
  void startServices();
  void enabledMayHaveChanged();

  Localize localize_;
  Observation regionalObservation_;  ///< for the life of the process
  Observation settingsObservation_;
};

}  // namespace velotap
