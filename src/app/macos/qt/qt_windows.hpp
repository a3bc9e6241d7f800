// The windows of the program on a Mac, drawn by Qt.
//
// Qt is a guest: the application object, its loop, its delegate and its menu bar are AppKit's, and
// panels, alerts, pasteboard and announcements are the system's own. Main thread, after the
// application object of Qt was made and before it is gone.
#pragma once

#include <memory>

#include "app/macos/windows.hpp"
#include "app/windows/onboarding_window.hpp"
#include "app/windows/settings_panes.hpp"
#include "settings/views/bridge/view_context.hpp"
#include "settings/window/settings_window.hpp"

namespace velotap {

class QtWindows final : public Windows {
 public:
  explicit QtWindows(WindowSurroundings surroundings);
  ~QtWindows() override;

  void connect(Application& application) override;
  void showSettings(SettingsPane pane) override;
  void refreshLocalizedLabels() override;
  [[nodiscard]] Editor editor() override;
  void close() override;

  /// Null until they were connected.
  [[nodiscard]] SettingsWindow* settings() const;
  [[nodiscard]] OnboardingWindow* onboarding() const;

 private:
  struct Shown;

  [[nodiscard]] SettingsPanes::Desktop panesDesktop();
  void showPane(PreferencesTab tab);
  void followAppearance();

  WindowSurroundings surroundings_;
  ViewContext context_{false};
  Observation appearanceChanges_;
  std::unique_ptr<Shown> shown_;
};

}  // namespace velotap
