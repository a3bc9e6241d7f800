// The application with windows: the models of the shell and of the settings, each with its view.
//
// Made after the platforms were set and the application object exists; runs from `launch` to
// `end`. Members are listed in the order in which they need each other. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/qt/desktop/desktop_appearance.hpp"
#include "app/app_delegate.hpp"
#include "app/onboarding.hpp"
#include "app/qt/onboarding_window.hpp"
#include "app/qt/status_item.hpp"
#include "app/tray_menu.hpp"
#include "config/conflict_checker.hpp"
#include "input/device_watcher.hpp"
#include "input/gesture_device.hpp"
#include "localization/system_regional_settings.hpp"
#include "platform/announcements.hpp"
#include "settings/general_pane.hpp"
#include "settings/gestures_pane.hpp"
#include "settings/retained_touches.hpp"
#include "settings/window/settings_window.hpp"

namespace velotap {

/// Speaks through whatever window is open.
class ViewAnnouncements final : public Announcements {
 public:
  explicit ViewAnnouncements(ViewContext& context) : context_(context) {}
  void post(const std::string& message, AnnouncementPriority) override;

 private:
  ViewContext& context_;
};

class DesktopApplication {
 public:
  /// What the desktop beneath knows and the ports do not say.
  struct Desktop {
    std::function<bool()> hidesFrontApplication;
    QString currentDesktop;
    QString frameFile;
  };

  DesktopApplication(ViewContext& context, Desktop desktop);

  void launch();
  /// Somebody started the program again.
  void reopen();
  void end();

 private:
  [[nodiscard]] AppDelegate::Steps steps();
  [[nodiscard]] TrayMenu::Services trayServices();
  [[nodiscard]] ApplicationEffects effects();
  [[nodiscard]] UpdateActions updateActions();
  [[nodiscard]] Onboarding::Effects onboardingEffects();
  [[nodiscard]] SettingsWindow::Effects settingsEffects();
  void makePanes(PanesObject& panes);
  [[nodiscard]] GeneralFacts generalFacts();
  [[nodiscard]] GestureFacts gestureFacts();
  void setEnabled(bool on);
  void toggleLaunchAtLogin();
  void showPane(PreferencesTab tab);
  void followAppearance();
  void tellThatTrayIsMissing();
  [[nodiscard]] static Texts texts();

  ViewContext& context_;
  Desktop desktop_;
  DesktopAppearance appearance_;
  ConflictChecker conflicts_;
  GestureDeviceSelection selection_;
  RetainedTouches touches_;
  DeviceWatcher watcher_;
  TrayMenu tray_;
  StatusItem statusItem_;
  Onboarding onboarding_;
  OnboardingWindow onboardingWindow_;
  SettingsWindow settings_;
  AppDelegate delegate_;
  bool trayIsMissing_ = false;
};

}  // namespace velotap
