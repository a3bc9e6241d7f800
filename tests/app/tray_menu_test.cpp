#include "app/tray_menu.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/shell_fakes.hpp"
#include "control/services.hpp"
#include "support/desktop.hpp"

namespace velotap {
namespace {

using test::Lines;
using Button = StatusItemClick::Button;

TEST(ClickActionTest, OnlyAPlainLeftClickToggles) {
  EXPECT_EQ(clickAction(StatusItemClick{Button::left, false}, true), ClickAction::toggle);
  EXPECT_EQ(clickAction(StatusItemClick{Button::left, true}, true), ClickAction::showMenu);
  EXPECT_EQ(clickAction(StatusItemClick{Button::right, false}, true), ClickAction::showMenu);
  EXPECT_EQ(clickAction(StatusItemClick{Button::other, false}, true), ClickAction::showMenu);
  EXPECT_EQ(clickAction(std::nullopt, true), ClickAction::showMenu);
}

TEST(ClickActionTest, WithoutTheSettingEveryClickOpensTheMenu) {
  for (const Button button : {Button::left, Button::right, Button::other}) {
    for (const bool control : {false, true}) {
      EXPECT_EQ(clickAction(StatusItemClick{button, control}, false), ClickAction::showMenu);
    }
  }
  EXPECT_EQ(clickAction(std::nullopt, false), ClickAction::showMenu);
}

TEST(StatusIconStateTest, FollowsSwitchAndListeners) {
  EXPECT_EQ(statusIconState(true, true), StatusIconState::active);
  EXPECT_EQ(statusIconState(true, false), StatusIconState::unavailable);
  EXPECT_EQ(statusIconState(false, false), StatusIconState::disabled);
  EXPECT_EQ(statusIconState(false, true), StatusIconState::disabled);
}

class TrayMenuTest : public ::testing::Test, protected test::Desktop {
 protected:
  TrayMenuTest() {
    services_.controller.closures.didChangeState = [this] { menu_.updateIcon(); };
    services_.apps.start();
    menu_.setView(
        {.create = [this] { calls_.emplace_back("create"); },
         .setIcon = [this](const StatusIcon& icon) { calls_.push_back(icon.label); },
         .setVisible = [this](bool on) { calls_.emplace_back(on ? "visible" : "hidden"); },
         .popUpMenu = [this](const auto&) { calls_.emplace_back("menu"); }});
  }

  void connectAndRun() {
    multitouch.add({.name = "pad"});
    services_.controller.start();
    calls_.clear();
  }
  void set(const char* key, bool on) { services_.defaults.set(key, on); }
  [[nodiscard]] bool isOn(const char* key) const { return services_.defaults.boolean(key); }
  Lines take() { return std::exchange(calls_, {}); }

  /// As a view shows it: the visible lines, "[x]" before checked ones, "(-)" before disabled ones.
  Lines shown() const { return lines(menu_.contextMenu()); }
  static Lines lines(const std::vector<MenuItem>& items, const std::string& indent = {}) {
    Lines all;
    for (const MenuItem& item : items) {
      if (item.hidden) continue;
      if (item.separator) {
        all.push_back(indent + "--");
        continue;
      }
      const char* state = !item.checked ? "" : (*item.checked ? "[x] " : "[ ] ");
      all.push_back(indent + (item.enabled ? "" : "(-) ") + state + item.title);
      for (const auto& line : lines(item.submenu, indent + "  ")) all.push_back(line);
    }
    return all;
  }
  const MenuItem& named(const std::string& title) const {
    return named(title, menu_.contextMenu());
  }
  static const MenuItem& named(const std::string& title, const std::vector<MenuItem>& items) {
    static const MenuItem kNone;
    for (const MenuItem& item : items) {
      if (item.title == title) return item;
      if (const MenuItem& inside = named(title, item.submenu); &inside != &kNone) return inside;
    }
    return kNone;
  }

  Services services_{platform};
  ConflictChecker conflicts_{systemPreferences, services_.defaults, mainQueue, alerts,
                             [](std::string_view key) { return std::string(key); }};
  Permissions permissions_{
      services_.defaults,
      mainQueue,
      {.readTrust = [this] { return trust.trusted(); }, .requestTrust = [] {}}};
  test::FakeLoginItem loginService_;
  LoginItem loginItem_{loginService_};
  test::FakeAnnouncements announced_;
  AccessibilityAnnouncements announcements_{announced_};
  std::optional<std::string> noUpdates_;
  Lines calls_;
  TrayMenu menu_{{.controller = services_.controller,
                  .config = services_.config,
                  .apps = services_.apps,
                  .conflicts = conflicts_,
                  .permissions = permissions_,
                  .loginItem = loginItem_,
                  .updates = {.unavailableReason = [this] { return noUpdates_; },
                              .check = [this] { calls_.emplace_back("check for updates"); }},
                  .unknownApplication = "com.example.unknown",
                  .announcements = announcements_,
                  .alerts = alerts,
                  .log = log},
                 {.activate = [this] { calls_.emplace_back("activate"); },
                  .terminate = [this] { calls_.emplace_back("terminate"); },
                  .openSettings =
                      [this](SettingsPane pane) {
                        calls_.emplace_back(pane == SettingsPane::general ? "general" : "about");
                      }},
                 [this] { calls_.emplace_back("onboarding"); },
                 [](std::string_view key) { return std::string(key); }};
};

TEST_F(TrayMenuTest, SetsUpIconThenVisibilityThenMenu) {
  menu_.setup();
  EXPECT_EQ(take(), (Lines{"create", "Velotap (unavailable)", "visible"}));
  EXPECT_FALSE(menu_.contextMenu().empty());
}

TEST_F(TrayMenuTest, StaysHiddenWherePeopleWantThat) {
  set("hideStatusBarIcon", true);
  menu_.setup();
  EXPECT_EQ(take().back(), "hidden");
  set("hideStatusBarIcon", false);
  menu_.applyVisibility();
  EXPECT_EQ(take(), Lines{"visible"});
}

TEST_F(TrayMenuTest, WorksWithoutAView) {
  menu_.setView({});
  menu_.setup();
  menu_.statusItemClicked(std::nullopt);
  EXPECT_EQ(take(), Lines{});
}

TEST_F(TrayMenuTest, TheIconSaysHowItIs) {
  EXPECT_EQ(menu_.icon().symbol, "exclamationmark.triangle");
  EXPECT_EQ(menu_.icon().label, "Velotap (unavailable)");
  connectAndRun();
  EXPECT_EQ(menu_.icon().symbol, "computermouse.fill");
  EXPECT_EQ(menu_.icon().label, "Velotap (active)");
  set("enabled", false);
  EXPECT_EQ(menu_.icon().symbol, "computermouse");
  EXPECT_EQ(menu_.icon().label, "Velotap (disabled)");
}

TEST_F(TrayMenuTest, TheIconFollowsTheController) {
  multitouch.add({.name = "pad"});
  services_.controller.start();
  EXPECT_EQ(take(), Lines{"Velotap (active)"});
  services_.controller.stop();
  EXPECT_EQ(take(), Lines{"Velotap (unavailable)"});
}

TEST_F(TrayMenuTest, HasEveryItemInOrder) {
  connectAndRun();
  activate("com.example.editor", "Editor");
  menu_.rebuildContextMenu();
  const Lines expected{"(-) status.active.title",
                       "[x] Enabled",
                       "--",
                       "[ ] Ignore Editor",
                       "Settings…",
                       "--",
                       "Magic Mouse",
                       "  [x] Click with One Finger in Center",
                       "  [ ] Click with Two Fingers",
                       "  [x] Click with Three Fingers",
                       "  [x] Tap with Three Fingers",
                       "  --",
                       "  [ ] Pinch to Zoom",
                       "  [ ] Rotate with Two Fingers",
                       "  [ ] 3-Finger Swipe: Back/Forward",
                       "Trackpad",
                       "  [x] Click with Three Fingers",
                       "  [x] Tap with Three Fingers",
                       "  [ ] Tap with Four Fingers",
                       "--",
                       "Check for Updates…",
                       "[ ] Launch at Login",
                       "Quit Velotap"};
  Lines got = shown();
  // Which gestures are on at first is the settings table's matter.
  const auto plain = [](Lines lines) {
    for (std::string& line : lines) {
      if (line.starts_with("  [")) line[3] = ' ';
    }
    return lines;
  };
  EXPECT_EQ(plain(got), plain(expected));
  EXPECT_EQ(menu_.contextMenu().size(), 14U);
}

TEST_F(TrayMenuTest, EachTriggerSwitchesItsOwnSetting) {
  const std::pair<const char*, Lines> menus[] = {
      {"Magic Mouse",
       {"mouseClick1Center", "mouseClick2", "mouseClick3", "mouseTap3", "", "mousePinchZoom",
        "mouseRotate", "mouseSwipe3Nav"}},
      {"Trackpad", {"padClick3", "padTap3", "padTap4"}}};
  menu_.rebuildContextMenu();
  for (const auto& [title, keys] : menus) {
    const std::vector<MenuItem> items = named(title).submenu;
    ASSERT_EQ(items.size(), keys.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
      EXPECT_EQ(items[i].settingKey, keys[i]);
      if (items[i].separator) continue;
      const bool before = isOn(keys[i].c_str());
      EXPECT_EQ(items[i].checked, before);
      items[i].action();
      EXPECT_EQ(isOn(keys[i].c_str()), !before) << keys[i];
      menu_.menuWillOpen();
      EXPECT_EQ(named(title).submenu[i].checked, !before);
      items[i].action();
      EXPECT_EQ(isOn(keys[i].c_str()), before) << keys[i];
    }
  }
}

TEST_F(TrayMenuTest, HasShortcutsForSettingsAndQuit) {
  menu_.rebuildContextMenu();
  EXPECT_EQ(named("Settings…").key, KeyEquivalent{','});
  EXPECT_EQ(named("Quit Velotap").key, KeyEquivalent{'q'});
  EXPECT_EQ(named("Enabled").key, std::nullopt);
}

TEST_F(TrayMenuTest, ItemsDoWhatTheySay) {
  menu_.rebuildContextMenu();
  named("Accessibility permission required…").action();
  named("Check gesture status…").action();
  named("Settings…").action();
  named("Quit Velotap").action();
  EXPECT_EQ(take(), (Lines{"onboarding", "general", "general", "terminate"}));
}

TEST_F(TrayMenuTest, ComesToTheFrontBeforeCheckingForUpdates) {
  menu_.rebuildContextMenu();
  named("Check for Updates…").action();
  EXPECT_EQ(take(), (Lines{"activate", "check for updates"}));
}

TEST_F(TrayMenuTest, SaysWhyThereAreNoUpdates) {
  noUpdates_ = "updates.unavailable.feed";
  menu_.rebuildContextMenu();
  EXPECT_FALSE(named("Check for Updates…").enabled);
  EXPECT_EQ(named("Check for Updates…").toolTip, "updates.unavailable.feed");
}

TEST_F(TrayMenuTest, TheStatusLineSaysWhatStandsInTheWay) {
  menu_.rebuildContextMenu();
  EXPECT_EQ(shown()[0], "(-) status.listeners.title");
  connectAndRun();
  menu_.menuWillOpen();
  EXPECT_EQ(shown()[0], "(-) status.active.title");
  menu_.toggleEnabled();
  menu_.menuWillOpen();
  EXPECT_EQ(shown()[0], "(-) status.paused.title");
}

TEST_F(TrayMenuTest, WithoutThePermissionTheShortcutSaysItInsteadOfTheStatusLine) {
  trust.setTrusted(false);
  menu_.rebuildContextMenu();
  EXPECT_EQ(shown()[0], "[x] Enabled");
  EXPECT_EQ(shown()[1], "Accessibility permission required…");
  trust.setTrusted(true);
  menu_.menuWillOpen();
  EXPECT_EQ(shown()[0], "(-) status.listeners.title");
  EXPECT_NE(shown()[2], "Accessibility permission required…");
}

TEST_F(TrayMenuTest, SwitchedOffWithoutPermissionSaysPausedAndOffersThePermission) {
  set("enabled", false);
  trust.setTrusted(false);
  menu_.rebuildContextMenu();
  EXPECT_EQ(shown()[0], "(-) status.paused.title");
  EXPECT_EQ(shown()[2], "Accessibility permission required…");
}

TEST_F(TrayMenuTest, RecoveryIsOfferedUntilTheListenersRun) {
  menu_.rebuildContextMenu();
  EXPECT_EQ(shown()[2], "Check gesture status…");
  connectAndRun();
  menu_.menuWillOpen();
  EXPECT_TRUE(named("Check gesture status…").hidden);
}

TEST_F(TrayMenuTest, RecoveryIsNotOfferedForOtherReasons) {
  set("enabled", false);
  menu_.rebuildContextMenu();
  EXPECT_TRUE(named("Check gesture status…").hidden);
  set("enabled", true);
  trust.setTrusted(false);
  menu_.menuWillOpen();
  EXPECT_TRUE(named("Check gesture status…").hidden);
}

TEST_F(TrayMenuTest, ALeftClickTogglesShowsAndSpeaks) {
  set("leftClickTogglesEnabled", true);
  connectAndRun();
  menu_.statusItemClicked(StatusItemClick{Button::left, false});
  EXPECT_FALSE(isOn("enabled"));
  EXPECT_FALSE(services_.controller.isRunning());
  EXPECT_EQ(take(), Lines{"Velotap (disabled)"});
  EXPECT_EQ(announced_.spoken, Lines{"statusbar.toggle.disabled (50)"});
  menu_.statusItemClicked(StatusItemClick{Button::left, false});
  EXPECT_TRUE(services_.controller.isRunning());
  EXPECT_EQ(take(), Lines{"Velotap (active)"});
  EXPECT_EQ(announced_.spoken.back(), "statusbar.toggle.enabled (50)");
}

TEST_F(TrayMenuTest, OtherClicksOpenAFreshMenuAndSpeakNothing) {
  set("leftClickTogglesEnabled", true);
  menu_.statusItemClicked(StatusItemClick{Button::right, false});
  menu_.statusItemClicked(StatusItemClick{Button::left, true});
  menu_.statusItemClicked(std::nullopt);
  set("leftClickTogglesEnabled", false);
  menu_.statusItemClicked(StatusItemClick{Button::left, false});
  EXPECT_EQ(take(), (Lines{"menu", "menu", "menu", "menu"}));
  EXPECT_EQ(menu_.contextMenu().size(), 14U);
  EXPECT_TRUE(isOn("enabled"));
  EXPECT_EQ(announced_.spoken, Lines{});
}

TEST_F(TrayMenuTest, TheSwitchInTheMenuSpeaksNothing) {
  menu_.toggleEnabled();
  EXPECT_EQ(announced_.spoken, Lines{});
}

TEST_F(TrayMenuTest, SwitchingAGestureOnChecksForConflictsOnce) {
  menu_.rebuildContextMenu();
  const auto warnings = [this] {
    advance(1.0);
    return alerts.shown().size();
  };
  systemPreferences.set(kTrackpadDomains[0], "TrackpadThreeFingerTapGesture", std::int64_t{2});
  set("padTap3", true);
  const MenuItem tap = named("Trackpad").submenu[1];
  tap.action();
  EXPECT_FALSE(isOn("padTap3"));
  EXPECT_EQ(warnings(), 0U) << "switching off warns of nothing";
  tap.action();
  EXPECT_TRUE(isOn("padTap3"));
  EXPECT_EQ(warnings(), 1U);
  tap.action();
  tap.action();
  EXPECT_EQ(warnings(), 1U) << "once for each gesture";
}

TEST_F(TrayMenuTest, AnItemWithoutAKeySwitchesNothing) {
  const auto before = preferences.load(kSettingsDomain);
  menu_.toggleTrigger(MenuItem{});
  EXPECT_EQ(preferences.load(kSettingsDomain), before);
}

TEST_F(TrayMenuTest, IgnoringTwiceRestoresTheListAndTellsTwice) {
  activate("com.example.editor", "Editor");
  services_.config.setIgnoredApps({"com.example.first"});
  int told = 0;
  const Observation observation = notifications.observe(kAppListsDidChange, [&told] { ++told; });
  menu_.toggleIgnoreApp();
  EXPECT_EQ(services_.config.ignoredApps(), (Lines{"com.example.first", "com.example.editor"}));
  menu_.rebuildContextMenu();
  EXPECT_EQ(named("Ignore Editor").checked, true);
  menu_.toggleIgnoreApp();
  EXPECT_EQ(services_.config.ignoredApps(), Lines{"com.example.first"});
  menu_.menuWillOpen();
  EXPECT_EQ(named("Ignore Editor").checked, false);
  EXPECT_EQ(told, 2);
}

TEST_F(TrayMenuTest, WithoutAnApplicationInFrontThereIsNothingToIgnore) {
  workspace.activate(std::nullopt);
  menu_.rebuildContextMenu();
  EXPECT_EQ(named("Ignore Current App").enabled, false);
  menu_.toggleIgnoreApp();
  EXPECT_EQ(services_.config.ignoredApps(), Lines{});
}

TEST_F(TrayMenuTest, AnApplicationThatNobodyKnowsCannotBeIgnored) {
  activate("com.example.unknown", "com.example.unknown");
  menu_.rebuildContextMenu();
  EXPECT_FALSE(named("Ignore Current App").enabled);
  EXPECT_EQ(named("Ignore Current App").checked, false);
  menu_.toggleIgnoreApp();
  EXPECT_EQ(services_.config.ignoredApps(), Lines{});
  activate("com.example.editor", "Editor");
  menu_.menuWillOpen();
  EXPECT_TRUE(named("Ignore Editor").enabled);
}

TEST_F(TrayMenuTest, BehindItsOwnWindowItNamesTheApplicationBefore) {
  activate("com.example.editor", "Editor");
  activate("app.norwend.velotap", "Velotap");
  menu_.rebuildContextMenu();
  EXPECT_TRUE(named("Ignore Editor").enabled);
}

TEST_F(TrayMenuTest, LaunchAtLoginShowsTheSystemsStatus) {
  menu_.rebuildContextMenu();
  EXPECT_EQ(named("Launch at Login").checked, false);
  named("Launch at Login").action();
  menu_.menuWillOpen();
  EXPECT_EQ(named("Launch at Login").checked, true);
  loginService_.now = LoginItemStatus::requiresApproval;
  menu_.menuWillOpen();
  EXPECT_EQ(named("Launch at Login").checked, false);
  named("Launch at Login").action();
  EXPECT_EQ(loginService_.settingsOpened, 1);
  EXPECT_EQ(alerts.shown().size(), 0U);
}

TEST_F(TrayMenuTest, ARefusedLoginItemIsShownAndLogged) {
  said.take();
  loginService_.error = "no space left on device";
  menu_.toggleLogin();
  EXPECT_EQ(take(), Lines{"activate"});
  ASSERT_EQ(alerts.shown().size(), 1U);
  EXPECT_EQ(alerts.shown()[0].message, "Could not update Launch at Login");
  EXPECT_EQ(alerts.shown()[0].informativeText, "no space left on device");
  EXPECT_EQ(alerts.shown()[0].buttons, Lines{"OK"});
  EXPECT_EQ(said.take(), Lines{"login item toggle failed: no space left on device"});
}

}  // namespace
}  // namespace velotap
