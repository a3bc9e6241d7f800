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
#include "app/qt/status_item.hpp"
#include "app/windows/onboarding_window.hpp"
#include "app/windows/settings_panes.hpp"
#include "localization/system_regional_settings.hpp"
#include "platform/applications.hpp"
#include "settings/window/settings_window.hpp"

namespace velotap {

class DesktopApplication {
 public:
  /// What the desktop beneath knows and the ports do not say.
  struct Desktop {
    Applications& applications;
    std::function<std::string(const std::string& bundleID)> icon;
    /// All but the place for the status item, which shows only with time.
    std::function<DesktopFacts()> facts;
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
  [[nodiscard]] SettingsPanes::Desktop panesDesktop();
  [[nodiscard]] SettingsWindow::Effects settingsEffects();
  [[nodiscard]] DesktopFacts desktopFacts() const;
  void showPane(PreferencesTab tab);
  void followAppearance();
  void tellThatTrayIsMissing();

  ViewContext& context_;
  Desktop desktop_;
  DesktopAppearance appearance_;
  Application application_;
  StatusItem statusItem_;
  OnboardingWindow onboardingWindow_;
  SettingsPanes panes_;
  SettingsWindow settings_;
  bool trayIsMissing_ = false;
};

}  // namespace velotap
