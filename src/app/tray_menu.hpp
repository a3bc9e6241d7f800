// The status item: what its icon says, what a click on it does, and the menu behind it.
//
// A plain model: a view shows the icon when it is told to, hands in clicks, and draws the menu that
// it is given. The menu is built anew before it is shown, so that titles and states are never
// stale; `menuWillOpen` brings a menu that was built earlier up to date. Main thread only.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/menu_item.hpp"
#include "app/shell_surroundings.hpp"
#include "config/app_tracker.hpp"
#include "config/config.hpp"
#include "config/conflict_checker.hpp"
#include "control/controller.hpp"
#include "platform/alerts.hpp"
#include "platform/diagnostic_log.hpp"
#include "shell/accessibility_announcements.hpp"
#include "shell/login_item.hpp"
#include "shell/permissions.hpp"

namespace velotap {

enum class StatusIconState { active, unavailable, disabled };

struct StatusIcon {
  StatusIconState state = StatusIconState::disabled;
  std::string symbol;  ///< the icon's name, for example "computermouse.fill"
  std::string label;   ///< tooltip and accessible name, localised
};

/// What the pointer did to the status item. Views that cannot tell hand in nothing.
struct StatusItemClick {
  enum class Button { left, right, other };
  Button button = Button::left;
  bool controlKey = false;
};

/// A plain left click switches, where the person wants that; whatever else shows the menu.
enum class ClickAction { toggle, showMenu };
[[nodiscard]] ClickAction clickAction(const std::optional<StatusItemClick>& click,
                                      bool leftClickToggles) noexcept;

[[nodiscard]] StatusIconState statusIconState(bool enabled, bool running) noexcept;

class TrayMenu {
 public:
  /// Services that the menu shows and switches. All outlive it.
  struct Services {
    Controller& controller;
    Config& config;
    AppTracker& apps;
    ConflictChecker& conflicts;
    Permissions& permissions;
    LoginItem& loginItem;
    UpdateActions updates;
    /// The identifier that stands for an application nobody knows; empty where there is none.
    std::string unknownApplication{};
    AccessibilityAnnouncements& announcements;
    Alerts& alerts;
    DiagnosticLog& log;
  };
  /// What the view does. Empty ones are skipped: a system without a tray has no view.
  struct View {
    std::function<void()> create{};                    ///< make the status item, not yet visible
    std::function<void(const StatusIcon&)> setIcon{};  ///< never drawn as disabled
    std::function<void(bool)> setVisible{};
    /// Shows the menu at the status item, highlighted while it is open.
    std::function<void(const std::vector<MenuItem>&)> popUpMenu{};
  };

  TrayMenu(Services services, ApplicationEffects application, std::function<void()> showOnboarding,
           Localize localize);

  void setView(View view) { view_ = std::move(view); }

  /// Makes the status item. Once.
  void setup();
  /// Shows the present state; to be called whenever it may have changed.
  void updateIcon();
  [[nodiscard]] StatusIcon icon() const;
  /// Shows or hides the status item, as the setting says now.
  void applyVisibility();

  void rebuildContextMenu();
  [[nodiscard]] const std::vector<MenuItem>& contextMenu() const noexcept { return menu_; }
  /// Refreshes what changes by itself: states, the status line, the application in front.
  void menuWillOpen();

  void statusItemClicked(const std::optional<StatusItemClick>& click);

  void toggleEnabled();
  void requestAccessibility() { showOnboarding_(); }
  void openRecovery() { application_.openSettings(SettingsPane::general); }
  void toggleIgnoreApp();
  void openSettings() { application_.openSettings(SettingsPane::general); }
  /// Does nothing for an item without a key.
  void toggleTrigger(const MenuItem& item);
  void checkForUpdates();
  void toggleLogin();

 private:
  [[nodiscard]] MenuItem item(std::string_view titleKey, std::function<void()> action) const;
  [[nodiscard]] MenuItem updatesItem();
  [[nodiscard]] MenuItem submenu(std::string_view titleKey);
  void addTrigger(std::string_view titleKey, std::string_view settingKey, MenuItem& menu);
  void refreshTriggers(std::vector<MenuItem>& items) const;
  void refreshIgnoreItem(MenuItem& item) const;
  [[nodiscard]] std::optional<AppTracker::Front> ignorableApp() const;
  [[nodiscard]] bool enabled() const;

  Services services_;
  ApplicationEffects application_;
  std::function<void()> showOnboarding_;
  Localize localize_;
  View view_;
  std::vector<MenuItem> menu_;
};

}  // namespace velotap
