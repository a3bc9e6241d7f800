// The General pane's object: what a person does reaches the services, and what the services say
// reaches the pane.

#include "settings/window/general_object.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/window/values.hpp"

namespace velotap::test {
namespace {

using Calls = std::vector<std::string>;

Texts english() {
  const std::vector<std::string> preferred = {"en"};
  return {Localization::shared().bundle(preferred), RegionalFormat("en_US")};
}

class GeneralObjectTest : public testing::Test {
 protected:
  GeneralEffects effects() {
    const auto note = [this](const char* call) {
      return [this, call] { calls.emplace_back(call); };
    };
    const auto noteWish = [this](const char* call) {
      return [this, call](bool on) { calls.push_back(std::string(call) + (on ? " on" : " off")); };
    };
    return {.texts = [] { return english(); },
            .facts = [this] { return facts; },
            .showPane =
                [this](PreferencesTab tab) {
                  calls.push_back("show " + std::string(preferencesTabLabel(tab)));
                },
            .chooseDevice =
                [this](GestureDevice device) {
                  calls.push_back("choose " + std::string(gestureDeviceText(device)));
                },
            .setEnabled =
                [this](bool on) {
                  calls.emplace_back(on ? "enable" : "disable");
                  facts.enabled = on;
                },
            .synchronizeEnabled = note("synchronize"),
            .setUpAccessibility = note("set up"),
            .startListeners = note("start"),
            .toggleLaunchAtLogin = note("toggle login item"),
            .openLoginItems = note("open login items"),
            .setLeftClickToggles = noteWish("left click"),
            .setHideIcon = noteWish("hide icon"),
            .setAutomaticChecks = noteWish("automatic checks"),
            .checkForUpdates = note("check")};
  }

  [[nodiscard]] QVariantMap part(const char* name) const {
    return pane.state().value(QLatin1String(name)).toMap();
  }

  Calls calls;
  GeneralFacts facts{.accessibilityGranted = true, .listenersRunning = true};
  GeneralObject pane{effects()};
};

TEST_F(GeneralObjectTest, TheSwitchIsSynchronizedOnceItChanged) {
  pane.refresh();
  EXPECT_EQ(calls, Calls()) << "it has not changed";
  pane.setEnabled(false);
  EXPECT_EQ(calls, (Calls{"disable", "synchronize"}));
  pane.refresh();
  pane.setEnabled(false);
  EXPECT_EQ(calls, (Calls{"disable", "synchronize", "disable"})) << "it is off already";
}

TEST_F(GeneralObjectTest, TheSwitchIsSynchronizedWhoeverChangedIt) {
  facts.enabled = false;
  pane.refresh();
  EXPECT_EQ(calls, (Calls{"synchronize"}));
  facts.enabled = true;
  pane.refresh();
  EXPECT_EQ(calls, (Calls{"synchronize", "synchronize"}));
}

TEST_F(GeneralObjectTest, SynchronizingMayRefreshThePane) {
  GeneralObject* made = nullptr;
  GeneralEffects all = effects();
  all.synchronizeEnabled = [&] {
    calls.emplace_back("synchronize");
    facts.listenersRunning = true;
    made->refresh();
  };
  facts.enabled = false;
  facts.listenersRunning = false;
  GeneralObject other(all);
  made = &other;
  other.setEnabled(true);
  EXPECT_EQ(calls, (Calls{"enable", "synchronize"}));
  EXPECT_EQ(other.state()[QStringLiteral("status")].toMap()[QStringLiteral("tone")], "good");
}

TEST_F(GeneralObjectTest, TheCardOffersWhatMendsIt) {
  pane.act();
  EXPECT_EQ(calls, Calls()) << "all is well";
  facts.listenersRunning = false;
  pane.refresh();
  EXPECT_EQ(part("status")[QStringLiteral("action")], QStringLiteral("Try Again"));
  pane.act();
  facts.accessibilityGranted = false;
  pane.refresh();
  pane.act();
  EXPECT_EQ(calls, (Calls{"start", "set up"}));
}

TEST_F(GeneralObjectTest, EachNeedIsMendedInItsRow) {
  facts = {.enabled = false};
  pane.refresh();
  calls.clear();
  for (const int row : {-1, 1, 2, 3, 0}) pane.resolve(row);
  EXPECT_EQ(calls, (Calls{"set up", "start", "enable", "synchronize"}));
  calls.clear();
  pane.resolve(0);
  EXPECT_EQ(calls, Calls()) << "it is met now";
}

TEST_F(GeneralObjectTest, TheHeadingOfTheNeedsSaysWhetherAllAreMet) {
  EXPECT_EQ(part("readiness")[QStringLiteral("status")], QStringLiteral("Ready"));
  EXPECT_EQ(part("readiness")[QStringLiteral("tone")], QStringLiteral("good"));
  facts.listenersRunning = false;
  pane.refresh();
  EXPECT_EQ(part("readiness")[QStringLiteral("status")], QStringLiteral("Needs attention"));
  EXPECT_EQ(part("readiness")[QStringLiteral("tone")], QStringLiteral("warning"));
}

TEST_F(GeneralObjectTest, ADeviceIsChosenBeforeItsGesturesAreShown) {
  pane.openDevice(QStringLiteral("trackpad"));
  pane.openDevice(QStringLiteral("mouse"));
  pane.openDevice(QStringLiteral("abacus"));
  EXPECT_EQ(calls, (Calls{"choose trackpad", "show Gestures", "choose mouse", "show Gestures"}));
}

TEST_F(GeneralObjectTest, LinksLeadToOtherPanes) {
  pane.openGestures();
  pane.openTuning();
  pane.setQuery(QStringLiteral("acknowledgements"));
  pane.openResult(QStringLiteral("4.Acknowledgements"));
  pane.openResult(QStringLiteral("0.Launch at Login"));
  EXPECT_EQ(calls, (Calls{"show Gestures", "show Tuning", "show About"})) << "only what is listed";
}

// Nothing is retried; the switch shows what the system says.
TEST_F(GeneralObjectTest, ALoginItemThatStaysOffReadsOff) {
  pane.setLaunchAtLogin(true);
  const auto launch = [this] { return part("startup")[QStringLiteral("launch")].toMap(); };
  EXPECT_EQ(calls, (Calls{"toggle login item"}));
  EXPECT_FALSE(launch()[QStringLiteral("on")].toBool());
  facts.loginItemStatus = LoginItemStatus::requiresApproval;
  pane.setLaunchAtLogin(true);
  EXPECT_FALSE(launch()[QStringLiteral("on")].toBool());
  EXPECT_EQ(launch()[QStringLiteral("action")], QStringLiteral("Open Login Items"));
  pane.openLoginItems();
  EXPECT_EQ(calls, (Calls{"toggle login item", "toggle login item", "open login items"}));
  calls.clear();
  facts.loginItemStatus = LoginItemStatus::notFound;
  pane.refresh();
  pane.setLaunchAtLogin(true);
  EXPECT_EQ(calls, (Calls{"toggle login item"})) << "an item that is broken can be mended";
  calls.clear();
  facts.loginItemStatus = LoginItemStatus::enabled;
  pane.refresh();
  EXPECT_TRUE(launch()[QStringLiteral("on")].toBool());
  pane.setLaunchAtLogin(true);
  EXPECT_EQ(calls, Calls()) << "it is on already";
}

TEST_F(GeneralObjectTest, SwitchesReachWhatTheySwitch) {
  pane.setLeftClickToggles(false);
  pane.setHideIcon(true);
  pane.setAutomaticUpdates(true);
  pane.checkForUpdates();
  EXPECT_EQ(calls, (Calls{"left click off", "hide icon on", "automatic checks on", "check"}));
}

TEST_F(GeneralObjectTest, WhatChangedElsewhereShowsAtTheNextLook) {
  facts.connectedDevices = {DeviceClass::trackpad};
  facts.hideStatusBarIcon = true;
  facts.automaticUpdateChecks = true;
  pane.refresh();
  EXPECT_TRUE(pane.devices()->rows().first()[QStringLiteral("connected")].toBool());
  EXPECT_TRUE(part("startup")[QStringLiteral("hide")].toMap()[QStringLiteral("on")].toBool());
  EXPECT_TRUE(part("updates")[QStringLiteral("automatic")].toMap()[QStringLiteral("on")].toBool());
}

}  // namespace
}  // namespace velotap::test
