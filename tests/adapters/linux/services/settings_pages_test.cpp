#include "adapters/linux/services/settings_pages.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

using Command = std::vector<std::string>;

TEST(SettingsPages, AreKnownByAddress) {
  EXPECT_EQ(settingsPageOf("x-apple.systempreferences:com.apple.preference.trackpad"),
            SettingsPage::trackpad);
  EXPECT_EQ(settingsPageOf("x-apple.systempreferences:com.apple.preference.mouse"),
            SettingsPage::mouse);
  EXPECT_EQ(settingsPageOf("x-apple.systempreferences:com.apple.LoginItems-Settings.extension"),
            SettingsPage::loginItems);
  EXPECT_EQ(settingsPageOf("x-apple.systempreferences:com.apple.preference.sound"),
            SettingsPage::none);
  EXPECT_EQ(settingsPageOf("com.apple.preference.mouse"), SettingsPage::none);
  EXPECT_EQ(settingsPageOf(""), SettingsPage::none);
}

TEST(SettingsPages, DependOnTheDesktop) {
  EXPECT_EQ(commandsFor(SettingsPage::mouse, "GNOME").at(0),
            (Command{"gnome-control-center", "mouse"}));
  EXPECT_EQ(commandsFor(SettingsPage::mouse, "ubuntu:GNOME").at(0),
            (Command{"gnome-control-center", "mouse"}));
  EXPECT_EQ(commandsFor(SettingsPage::trackpad, "KDE").at(0),
            (Command{"systemsettings", "kcm_touchpad"}));
  EXPECT_EQ(commandsFor(SettingsPage::loginItems, "KDE").size(), 2U);
  EXPECT_TRUE(commandsFor(SettingsPage::none, "KDE").empty());
  EXPECT_TRUE(commandsFor(SettingsPage::mouse, "").empty());
  EXPECT_TRUE(commandsFor(SettingsPage::mouse, "sway").empty());
  EXPECT_TRUE(commandsFor(SettingsPage::mouse, "GNOMEish:kde").empty());
}

}  // namespace
}  // namespace velotap
