#include "adapters/linux/services/settings_pages.hpp"

#include <algorithm>

namespace velotap {
namespace {

constexpr std::string_view kScheme = "x-apple.systempreferences:";

struct DesktopPages {
  std::string_view desktop;  // a component of XDG_CURRENT_DESKTOP
  std::vector<std::vector<std::string>> trackpad;
  std::vector<std::vector<std::string>> mouse;
  std::vector<std::vector<std::string>> loginItems;
};

const std::vector<DesktopPages>& allPages() {
  static const std::vector<DesktopPages> kPages = {
      {"GNOME",
       {{"gnome-control-center", "mouse"}},
       {{"gnome-control-center", "mouse"}},
       {{"gnome-tweaks"}, {"gnome-session-properties"}}},
      {"KDE",
       {{"systemsettings", "kcm_touchpad"}, {"systemsettings5", "kcm_touchpad"}},
       {{"systemsettings", "kcm_mouse"}, {"systemsettings5", "kcm_mouse"}},
       {{"systemsettings", "kcm_autostart"}, {"systemsettings5", "kcm_autostart"}}},
      {"XFCE",
       {{"xfce4-mouse-settings"}},
       {{"xfce4-mouse-settings"}},
       {{"xfce4-session-settings"}}},
      {"X-Cinnamon",
       {{"cinnamon-settings", "mouse"}},
       {{"cinnamon-settings", "mouse"}},
       {{"cinnamon-settings", "startup"}}},
      {"MATE",
       {{"mate-mouse-properties"}},
       {{"mate-mouse-properties"}},
       {{"mate-session-properties"}}},
      {"LXQt", {{"lxqt-config-input"}}, {{"lxqt-config-input"}}, {{"lxqt-config-session"}}},
  };
  return kPages;
}

bool hasComponent(std::string_view list, std::string_view name) {
  while (!list.empty()) {
    const std::size_t end = std::min(list.find(':'), list.size());
    if (list.substr(0, end) == name) return true;
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return false;
}

}  // namespace

SettingsPage settingsPageOf(std::string_view url) {
  if (!url.starts_with(kScheme)) return SettingsPage::none;
  url.remove_prefix(kScheme.size());
  if (url == "com.apple.preference.trackpad") return SettingsPage::trackpad;
  if (url == "com.apple.preference.mouse") return SettingsPage::mouse;
  if (url == "com.apple.LoginItems-Settings.extension") return SettingsPage::loginItems;
  return SettingsPage::none;
}

std::vector<std::vector<std::string>> commandsFor(SettingsPage page,
                                                  std::string_view currentDesktop) {
  for (const DesktopPages& pages : allPages()) {
    if (!hasComponent(currentDesktop, pages.desktop)) continue;
    switch (page) {
      case SettingsPage::none:
        return {};
      case SettingsPage::trackpad:
        return pages.trackpad;
      case SettingsPage::mouse:
        return pages.mouse;
      case SettingsPage::loginItems:
        return pages.loginItems;
    }
  }
  return {};
}

}  // namespace velotap
