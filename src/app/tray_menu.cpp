#include "app/tray_menu.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "config/settings_keys.hpp"
#include "localization/text_format.hpp"
#include "shell/general_readiness.hpp"

namespace velotap {
namespace {

// Where the items are that change while the menu exists.
enum Place : std::size_t {
  statusLine = 0,
  enabledSwitch = 1,
  permissionShortcut = 2,
  recovery = 3,
  ignoreApp = 5,
  launchAtLogin = 12,
};

void flip(DefaultsStore& defaults, std::string_view key) {
  defaults.set(key, !defaults.boolean(key));
}

const char* symbolOf(StatusIconState state) {
  switch (state) {
    case StatusIconState::active:
      return "computermouse.fill";
    case StatusIconState::unavailable:
      return "exclamationmark.triangle";
    case StatusIconState::disabled:
      break;
  }
  return "computermouse";
}

const char* labelKeyOf(StatusIconState state) {
  switch (state) {
    case StatusIconState::active:
      return "Velotap (active)";
    case StatusIconState::unavailable:
      return "Velotap (unavailable)";
    case StatusIconState::disabled:
      break;
  }
  return "Velotap (disabled)";
}

}  // namespace

ClickAction clickAction(const std::optional<StatusItemClick>& click,
                        bool leftClickToggles) noexcept {
  const bool plainLeft =
      click && click->button == StatusItemClick::Button::left && !click->controlKey;
  return plainLeft && leftClickToggles ? ClickAction::toggle : ClickAction::showMenu;
}

StatusIconState statusIconState(bool enabled, bool running) noexcept {
  if (!enabled) return StatusIconState::disabled;
  return running ? StatusIconState::active : StatusIconState::unavailable;
}

TrayMenu::TrayMenu(Services services, ApplicationEffects application,
                   std::function<void()> showOnboarding, Localize localize)
    : services_(std::move(services)),
      application_(std::move(application)),
      showOnboarding_(std::move(showOnboarding)),
      localize_(std::move(localize)) {}

bool TrayMenu::enabled() const {
  return services_.config.enabled();
}

void TrayMenu::setup() {
  if (view_.create) view_.create();
  updateIcon();
  applyVisibility();
  rebuildContextMenu();
}

void TrayMenu::applyVisibility() {
  if (view_.setVisible) {
    view_.setVisible(!services_.config.defaults().boolean(keys::kHideStatusBarIcon));
  }
}

StatusIcon TrayMenu::icon() const {
  const StatusIconState state = statusIconState(enabled(), services_.controller.isRunning());
  return {.state = state, .symbol = symbolOf(state), .label = localize_(labelKeyOf(state))};
}

void TrayMenu::updateIcon() {
  if (view_.setIcon) view_.setIcon(icon());
}

MenuItem TrayMenu::item(std::string_view titleKey, std::function<void()> action) const {
  MenuItem made;
  if (!titleKey.empty()) made.title = localize_(titleKey);
  made.action = std::move(action);
  return made;
}

MenuItem TrayMenu::updatesItem() {
  MenuItem made = item("Check for Updates…", [this] { checkForUpdates(); });
  if (const auto reason = services_.updates.unavailableReason()) {
    made.enabled = false;
    made.toolTip = localize_(*reason);
  }
  return made;
}

MenuItem TrayMenu::submenu(std::string_view titleKey) {
  return item(titleKey, {});
}

void TrayMenu::addTrigger(std::string_view titleKey, std::string_view settingKey, MenuItem& menu) {
  MenuItem made = item(titleKey, {});
  made.settingKey = settingKey;
  made.checked = services_.config.defaults().boolean(settingKey);
  made.action = [this, key = MenuItem{.settingKey = std::string(settingKey)}] {
    toggleTrigger(key);
  };
  menu.submenu.push_back(std::move(made));
}

void TrayMenu::rebuildContextMenu() {
  MenuItem mouse = submenu("Magic Mouse");
  addTrigger("Click with One Finger in Center", keys::kMouseClick1Center, mouse);
  addTrigger("Click with Two Fingers", keys::kMouseClick2, mouse);
  addTrigger("Click with Three Fingers", keys::kMouseClick3, mouse);
  addTrigger("Tap with Three Fingers", keys::kMouseTap3, mouse);
  mouse.submenu.push_back(MenuItem::line());
  addTrigger("Pinch to Zoom", keys::kMousePinchZoom, mouse);
  addTrigger("Rotate with Two Fingers", keys::kMouseRotate, mouse);
  addTrigger("3-Finger Swipe: Back/Forward", keys::kMouseSwipe3Nav, mouse);

  MenuItem pad = submenu("Trackpad");
  addTrigger("Click with Three Fingers", keys::kPadClick3, pad);
  addTrigger("Tap with Three Fingers", keys::kPadTap3, pad);
  addTrigger("Tap with Four Fingers", keys::kPadTap4, pad);

  MenuItem status = item({}, {});
  status.enabled = false;
  MenuItem settings = item("Settings…", [this] { openSettings(); });
  settings.key = KeyEquivalent{','};
  MenuItem quit = item("Quit Velotap", [this] { application_.terminate(); });
  quit.key = KeyEquivalent{'q'};

  menu_ = {std::move(status),
           item("Enabled", [this] { toggleEnabled(); }),
           item("Accessibility permission required…", [this] { requestAccessibility(); }),
           item({}, [this] { openRecovery(); }),
           MenuItem::line(),
           item("Ignore Current App", [this] { toggleIgnoreApp(); }),
           std::move(settings),
           MenuItem::line(),
           std::move(mouse),
           std::move(pad),
           MenuItem::line(),
           updatesItem(),
           item("Launch at Login", [this] { toggleLogin(); }),
           std::move(quit)};
  menuWillOpen();
}

void TrayMenu::menuWillOpen() {
  if (menu_.empty()) return;
  const bool running = services_.controller.isRunning();
  const bool granted = services_.permissions.closures.readTrust();
  const GeneralReadiness readiness =
      running ? GeneralReadiness::active : generalReadiness(enabled(), granted, running);
  menu_[statusLine].title = localize_(readinessTitleKey(readiness));
  menu_[statusLine].hidden = readiness == GeneralReadiness::permission;
  menu_[enabledSwitch].checked = enabled();
  menu_[permissionShortcut].hidden = granted;
  menu_[recovery].hidden = readiness != GeneralReadiness::listeners;
  menu_[recovery].title = localize_("Check gesture status…");
  menu_[launchAtLogin].checked = services_.loginItem.status() == LoginItemStatus::enabled;
  refreshTriggers(menu_);
  refreshIgnoreItem(menu_[ignoreApp]);
}

void TrayMenu::refreshTriggers(std::vector<MenuItem>& items) const {
  for (MenuItem& each : items) {
    if (!each.settingKey.empty()) {
      each.checked = services_.config.defaults().boolean(each.settingKey);
    }
    refreshTriggers(each.submenu);
  }
}

// What nobody knows cannot be told from anything else: a rule for it would be one for all of that.
std::optional<AppTracker::Front> TrayMenu::ignorableApp() const {
  auto front = services_.apps.frontApp();
  if (front && front->bundleID.text() == services_.unknownApplication) front.reset();
  return front;
}

void TrayMenu::refreshIgnoreItem(MenuItem& ignore) const {
  const auto front = ignorableApp();
  ignore.enabled = front.has_value();
  if (!front) {
    ignore.title = localize_("Ignore Current App");
    ignore.checked = false;
    return;
  }
  ignore.title = formatText(localize_("Ignore %@"), {front->name});
  const auto ignored = Config::normalizedAppIDs(services_.config.ignoredApps());
  ignore.checked =
      std::find(ignored.begin(), ignored.end(), front->bundleID.text()) != ignored.end();
}

void TrayMenu::statusItemClicked(const std::optional<StatusItemClick>& click) {
  const bool toggles = services_.config.defaults().boolean(keys::kLeftClickTogglesEnabled);
  switch (clickAction(click, toggles)) {
    case ClickAction::showMenu:
      rebuildContextMenu();
      if (view_.popUpMenu) view_.popUpMenu(menu_);
      return;
    case ClickAction::toggle:
      toggleEnabled();
      services_.announcements.post(
          localize_(enabled() ? "statusbar.toggle.enabled" : "statusbar.toggle.disabled"),
          AnnouncementPriority::medium);
      return;
  }
}

void TrayMenu::toggleEnabled() {
  flip(services_.config.defaults(), keys::kEnabled);
  if (enabled()) {
    services_.controller.start();
  } else {
    services_.controller.stop();
  }
}

void TrayMenu::toggleTrigger(const MenuItem& trigger) {
  if (trigger.settingKey.empty()) return;
  DefaultsStore& defaults = services_.config.defaults();
  flip(defaults, trigger.settingKey);
  if (defaults.boolean(trigger.settingKey)) {
    services_.conflicts.checkAfterEnabling(trigger.settingKey);
  }
}

void TrayMenu::toggleIgnoreApp() {
  const auto front = ignorableApp();
  if (!front) return;
  auto ignored = Config::normalizedAppIDs(services_.config.ignoredApps());
  const std::string id(front->bundleID.text());
  if (std::erase(ignored, id) == 0) ignored.push_back(id);
  services_.config.setIgnoredApps(ignored);
}

void TrayMenu::checkForUpdates() {
  application_.activate();
  services_.updates.check();
}

void TrayMenu::toggleLogin() {
  const auto error = services_.loginItem.toggle();
  if (!error) return;
  if (services_.log.enabled()) services_.log.line("login item toggle failed: " + *error);
  application_.activate();
  services_.alerts.runModal({.message = localize_("Could not update Launch at Login"),
                             .informativeText = *error,
                             .buttons = {localize_("OK")}});
}

}  // namespace velotap
