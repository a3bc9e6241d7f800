// The application put together: its menus, its onboarding, its crash reporter and its delegate,
// over the shared services of this process.
//
// One for a process, made on the main thread after Platform and ShellPlatform were set, destroyed
// before they are. A program gives the parts their views, tells the delegate what happens to it,
// and needs to know nothing else. Without views it is a background program.
#pragma once

#include <functional>
#include <string>

#include "app/app_delegate.hpp"
#include "app/main_menu.hpp"
#include "app/onboarding.hpp"
#include "app/shell_surroundings.hpp"
#include "app/tray_menu.hpp"
#include "config/conflict_checker.hpp"
#include "input/device_watcher.hpp"
#include "shell/crash_reporter.hpp"
#include "shell/updater.hpp"

namespace velotap {

class Application {
 public:
  struct Surroundings {
    ApplicationEffects effects;
    Localize localize;
    /// Calls back at each change of language or region.
    std::function<Observation(std::function<void()>)> observeRegionalSettings;
    std::string variant{};  ///< of the onboarding's wording: "linux", or empty
    std::string version;    ///< of the program, for crash reports
    /// Whether there is a window to explain the permission in. Without one the first launch that
    /// has one still explains it.
    bool explainsPermission = true;
    /// The identifier that stands for an application nobody knows; empty where there is none.
    std::string unknownApplication{};
    /// Of the settings window; empty without one.
    std::function<void()> refreshLocalizedLabels{};
    /// Puts the main menu in place; empty without one.
    std::function<void(const std::vector<MenuItem>&)> showMainMenu{};
    /// How a crash report is offered; empty for an ordinary alert.
    std::function<int(const AlertRequest&)> offerCrashReport{};
  };

  explicit Application(Surroundings surroundings);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  [[nodiscard]] AppDelegate& delegate() noexcept { return delegate_; }
  [[nodiscard]] TrayMenu& trayMenu() noexcept { return trayMenu_; }
  [[nodiscard]] MainMenu& mainMenu() noexcept { return mainMenu_; }
  [[nodiscard]] Onboarding& onboarding() noexcept { return onboarding_; }
  [[nodiscard]] ConflictChecker& conflicts() noexcept { return conflicts_; }
  [[nodiscard]] CrashReporter& crashReporter() noexcept { return crashReporter_; }
  [[nodiscard]] DeviceWatcher& watcher() noexcept { return watcher_; }

 private:
  [[nodiscard]] CrashReporter::Surroundings crashSurroundings() const;
  [[nodiscard]] TrayMenu::Services trayServices();
  [[nodiscard]] Onboarding::Effects onboardingEffects() const;
  [[nodiscard]] AppDelegate::Steps steps();
  void addLaunchSteps(AppDelegate::Steps& steps);
  void addControllerSteps(AppDelegate::Steps& steps) const;

  Surroundings surroundings_;
  ConflictChecker conflicts_;
  CrashReporter crashReporter_;
  Onboarding onboarding_;
  TrayMenu trayMenu_;
  MainMenu mainMenu_;
  DeviceWatcher watcher_;
  AppDelegate delegate_;
};

}  // namespace velotap
