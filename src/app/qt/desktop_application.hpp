// The application with windows: Application and the panes of the settings, each with its view.
//
// Made after the platforms were set and the application object exists; runs from `launch` to
// `end`. Members are listed in the order in which they need each other. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/qt/desktop/desktop_appearance.hpp"
#include "app/application.hpp"
#include "app/qt/onboarding_window.hpp"
#include "app/qt/status_item.hpp"
#include "input/gesture_device.hpp"
#include "localization/system_regional_settings.hpp"
#include "platform/applications.hpp"
#include "settings/general_pane.hpp"
#include "settings/gestures_pane.hpp"
#include "settings/retained_touches.hpp"
#include "settings/support_snapshot.hpp"
#include "settings/window/settings_window.hpp"

namespace velotap {

class DesktopApplication {
 public:
  /// What the desktop beneath knows and the ports do not say.
  struct Desktop {
    Applications& applications;
    std::function<std::string(const std::string& bundleID)> icon;
    std::function<bool()> hidesFrontApplication;
    std::string unknownApplication;  ///< the identifier that stands for one
    QString currentDesktop;
    QString frameFile;
  };

  DesktopApplication(ViewContext& context, Desktop desktop);

  void launch();
  /// Somebody started the program again.
  void reopen();
  void end();

 private:
  [[nodiscard]] Application::Surroundings surroundings();
  [[nodiscard]] ApplicationEffects effects();
  [[nodiscard]] SettingsWindow::Effects settingsEffects();
  void makePanes(PanesObject& panes);
  [[nodiscard]] GeneralFacts generalFacts();
  [[nodiscard]] GestureFacts gestureFacts();
  [[nodiscard]] SupportFacts supportFacts();
  void makeListPanes(PanesObject& panes);
  void setEnabled(bool on);
  void toggleLaunchAtLogin();
  void showPane(PreferencesTab tab);
  void followAppearance();
  void tellThatTrayIsMissing();
  [[nodiscard]] static Texts texts();

  ViewContext& context_;
  Desktop desktop_;
  DesktopAppearance appearance_;
  GestureDeviceSelection selection_;
  RetainedTouches touches_;
  Application application_;
  StatusItem statusItem_;
  OnboardingWindow onboardingWindow_;
  SettingsWindow settings_;
  bool trayIsMissing_ = false;
};

}  // namespace velotap
