// The application on a Mac: the shared services, the menus and the launch order, over the system's
// menu bar and status item. The event loop, and who calls the delegate's events, is the program's.
//
// One in a process, after the platforms were set. Main thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "adapters/macos/menus/native_menu.hpp"
#include "app/app_delegate.hpp"
#include "app/main_menu.hpp"
#include "app/onboarding.hpp"
#include "app/tray_menu.hpp"
#include "config/conflict_checker.hpp"
#include "input/device_watcher.hpp"
#include "shell/crash_reporter.hpp"

namespace velotap {

/// What only the program can do.
struct MacApplicationEffects {
  ApplicationEffects application;
  Onboarding::View onboarding;
  std::function<void()> refreshSettingsLabels;
  /// Called with where the records go, once there is a place for them.
  std::function<void(const std::string& logPath)> recordUncaughtExceptions;
};

class MacApplication {
 public:
  MacApplication(NativeMenuBar& menuBar, NativeStatusItem& statusItem,
                 MacApplicationEffects effects);

  [[nodiscard]] AppDelegate& delegate() noexcept { return delegate_; }
  [[nodiscard]] Onboarding& onboarding() noexcept { return onboarding_; }

 private:
  [[nodiscard]] AppDelegate::Steps steps();
  void addLaunchSteps(AppDelegate::Steps& steps);
  void addLifeSteps(AppDelegate::Steps& steps);

  NativeMenuBar& menuBar_;
  NativeStatusItem& statusItem_;
  MacApplicationEffects effects_;
  UpdateActions updates_;
  ConflictChecker conflicts_;
  CrashReporter crashes_;
  Onboarding onboarding_;
  TrayMenu tray_;
  MainMenu mainMenu_;
  DeviceWatcher watcher_;
  AppDelegate delegate_;
};

}  // namespace velotap
