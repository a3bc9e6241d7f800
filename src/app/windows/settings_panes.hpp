// The panes of the settings window, wired to the services of this process.
//
// What differs between systems is handed in. Main thread, after the platforms were set; the
// application and this object outlive the window.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/application.hpp"
#include "input/gesture_device.hpp"
#include "localization/texts.hpp"
#include "platform/applications.hpp"
#include "settings/apps_pane.hpp"
#include "settings/general_pane.hpp"
#include "settings/gestures_pane.hpp"
#include "settings/support_snapshot.hpp"
#include "settings/window/settings_window.hpp"

namespace velotap {

class SettingsPanes {
 public:
  /// What the panes reach beyond the ports.
  struct Desktop {
    Applications& applications;
    std::function<AppsPane::Options()> appsOptions;
    std::function<DesktopFacts()> facts;
    bool answersTouchpads = false;  ///< three fingers may be the desktop's own to answer
    std::string system;             ///< name of the operating system, for support
    std::string systemVersion;      ///< of the system, not of this machine
    BuildFacts build = builtAs();
    /// Lets the person choose among installed applications; their identifiers.
    std::function<std::vector<std::string>(const std::string& message)> chooseApplications;
    /// Lets the person say where; false when the text could not be written there.
    std::function<bool(std::string_view name, const std::string& text)> save;
    std::function<bool(const std::string& text)> copy;
    std::function<void(const std::string& location)> reveal;
    /// Name or path of the application's icon.
    std::function<std::string(const std::string& bundleID)> icon;
    std::function<std::string()> notices;
  };

  SettingsPanes(Application& application, Desktop desktop,
                std::function<void(PreferencesTab)> show);

  /// What the settings window is made with.
  [[nodiscard]] SettingsWindow::Effects effects(const QString& frameFile);
  [[nodiscard]] static Texts texts();
  /// What this program was built as, for systems that have no other place to say it.
  [[nodiscard]] static BuildFacts builtAs();

 private:
  void make(PanesObject& panes);
  void makeLists(PanesObject& panes);
  [[nodiscard]] GeneralFacts generalFacts() const;
  [[nodiscard]] GestureFacts gestureFacts() const;
  [[nodiscard]] SupportFacts supportFacts() const;
  void setEnabled(bool on);
  static void synchronizeEnabled();
  void openAccessibilitySettings();
  static void toggleLaunchAtLogin();

  Application& application_;
  Desktop desktop_;
  std::function<void(PreferencesTab)> show_;
  GestureDeviceSelection selection_;
};

}  // namespace velotap
