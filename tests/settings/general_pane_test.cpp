#include "settings/general_pane.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings_fixture.hpp"

namespace velotap {
namespace {

using test::english;

GeneralFacts working() {
  GeneralFacts facts;
  facts.accessibilityGranted = true;
  facts.listenersRunning = true;
  return facts;
}

TEST(GeneralPane, SaysThatAllIsWell) {
  const GeneralStatusCard card = generalView(working(), english()).card;
  EXPECT_EQ(card.readiness, GeneralReadiness::active);
  EXPECT_EQ(card.title, "Gestures are working");
  EXPECT_EQ(card.symbol, "computermouse.fill");
  EXPECT_EQ(card.colour, GeneralColour::green);
  EXPECT_EQ(card.action, GeneralAction::none);
  EXPECT_EQ(card.actionTitle, "");
}

TEST(GeneralPane, PausedComesBeforeTheMissingPermission) {
  GeneralFacts facts;
  facts.enabled = false;
  const GeneralStatusCard card = generalView(facts, english()).card;
  EXPECT_EQ(card.readiness, GeneralReadiness::paused);
  EXPECT_EQ(card.symbol, "pause.fill");
  EXPECT_EQ(card.colour, GeneralColour::secondary);
  EXPECT_EQ(card.action, GeneralAction::none);
}

TEST(GeneralPane, ThePermissionComesBeforeTheListeners) {
  GeneralFacts facts = working();
  facts.accessibilityGranted = false;
  const GeneralStatusCard card = generalView(facts, english()).card;
  EXPECT_EQ(card.title, "Accessibility permission required");
  EXPECT_EQ(card.symbol, "hand.raised.fill");
  EXPECT_EQ(card.action, GeneralAction::setUpAccessibility);
  EXPECT_EQ(card.actionTitle, "Accessibility Setup…");
}

TEST(GeneralPane, ListenersThatFailedCanBeTriedAgain) {
  GeneralFacts facts = working();
  facts.listenersRunning = false;
  const GeneralStatusCard card = generalView(facts, english()).card;
  EXPECT_EQ(card.readiness, GeneralReadiness::listeners);
  EXPECT_EQ(card.symbol, "exclamationmark.triangle.fill");
  EXPECT_EQ(card.colour, GeneralColour::orange);
  EXPECT_EQ(card.action, GeneralAction::startListeners);
  EXPECT_EQ(card.actionTitle, "Try Again");
}

TEST(GeneralPane, EachNeedHasARow) {
  GeneralFacts facts = working();
  facts.accessibilityGranted = false;
  const auto rows = generalView(facts, english()).readinessRows;
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0].title, "Enable Velotap");
  EXPECT_EQ(rows[0].status, "Ready");
  EXPECT_EQ(rows[0].symbol, "checkmark.circle.fill");
  EXPECT_EQ(rows[0].action, GeneralAction::none);
  EXPECT_FALSE(rows[1].met);
  EXPECT_EQ(rows[1].status, "Needs attention");
  EXPECT_EQ(rows[1].symbol, "exclamationmark.circle");
  EXPECT_EQ(rows[1].actionTitle, "Accessibility Setup…");
  EXPECT_EQ(rows[2].title, "Touch and click listeners");
  EXPECT_TRUE(rows[2].met);

  const auto none = generalView({.enabled = false}, english()).readinessRows;
  EXPECT_EQ(none[0].action, GeneralAction::enable);
  EXPECT_EQ(none[0].actionTitle, "Enable Velotap");
  EXPECT_EQ(none[2].action, GeneralAction::startListeners);
  EXPECT_EQ(none[2].actionTitle, "Try Again");
}

TEST(GeneralPane, AnItemThatAwaitsApprovalReadsOff) {
  GeneralFacts facts = working();
  facts.loginItemStatus = LoginItemStatus::requiresApproval;
  GeneralView view = generalView(facts, english());
  EXPECT_FALSE(view.launchesAtLogin);
  EXPECT_NE(view.approvalCaption, "");
  EXPECT_EQ(view.openLoginItems, "Open Login Items");

  facts.loginItemStatus = LoginItemStatus::enabled;
  view = generalView(facts, english());
  EXPECT_TRUE(view.launchesAtLogin);
  EXPECT_EQ(view.approvalCaption, "");
  EXPECT_EQ(view.openLoginItems, "");

  facts.loginItemStatus = LoginItemStatus::notFound;
  EXPECT_FALSE(generalView(facts, english()).launchesAtLogin);
  EXPECT_EQ(generalView(facts, english()).approvalCaption, "");
  facts.loginItemStatus = LoginItemStatus::notRegistered;
  EXPECT_FALSE(generalView(facts, english()).launchesAtLogin);
}

TEST(GeneralPane, AHiddenIconExplainsTheWayBack) {
  GeneralFacts facts = working();
  EXPECT_EQ(generalView(facts, english()).hiddenCaption, "");
  facts.hideStatusBarIcon = true;
  const GeneralView view = generalView(facts, english());
  EXPECT_TRUE(view.hidesIcon);
  EXPECT_NE(view.hiddenCaption, "");
  const Confirmation question = hideIconQuestion(english());
  EXPECT_EQ(question.title, "Hide the menu bar icon?");
  EXPECT_EQ(question.cancel, "Cancel");
}

TEST(GeneralPane, SaysWhenItLookedForUpdates) {
  constexpr std::int64_t kNow = 1'700'000'000;
  GeneralFacts facts = working();
  facts.now = kNow;
  EXPECT_EQ(generalView(facts, english()).lastChecked, "Not checked yet");
  facts.lastUpdateCheck = kNow - 86400;
  EXPECT_EQ(generalView(facts, english()).lastChecked, "Last checked yesterday");
  EXPECT_EQ(generalView(facts, test::textsIn("de")).lastChecked, "Zuletzt gesucht: gestern");
  facts.updatesUnavailable = "a reason";
  const GeneralView view = generalView(facts, english());
  EXPECT_EQ(view.lastChecked, "a reason");
  EXPECT_FALSE(view.canCheck);
}

TEST(GeneralPane, SaysWhatTheDesktopCannotDo) {
  GeneralFacts facts = working();
  EXPECT_TRUE(generalView(facts, english()).notes.empty());
  facts.desktop = {.hasTray = false,
                   .mouseWithoutDriver = true,
                   .refused = {{.name = "Trackpad", .heldByAnother = true}, {.name = "Mouse"}}};
  const auto notes = generalView(facts, english()).notes;
  ASSERT_EQ(notes.size(), 4U);
  EXPECT_EQ(notes[2], "Another program keeps Trackpad to itself, so its clicks stay as they are.");
  EXPECT_EQ(notes[3], "Mouse could not be taken over, so its clicks stay as they are.");
}

TEST(GeneralPane, SaysWhatIsParticularToTheDesktop) {
  GeneralFacts facts = working();
  EXPECT_TRUE(generalView(facts, english()).desktopRows.empty());
  facts.desktop.frontTeller = FrontTeller::xServer;
  auto rows = generalView(facts, english()).desktopRows;
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].caption, "The X server tells which app is in front.");
  EXPECT_TRUE(rows[0].inOrder);
  facts.desktop.frontTeller = FrontTeller::nobody;
  facts.desktop.accessByRule = true;
  rows = generalView(facts, english()).desktopRows;
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].caption, "A rule of the system opens your trackpads and mice to Velotap.");
  EXPECT_TRUE(rows[0].inOrder);
  EXPECT_FALSE(rows[1].inOrder) << "rules for applications cannot apply";
  facts.accessibilityGranted = false;
  rows = generalView(facts, english()).desktopRows;
  EXPECT_EQ(rows[0].caption, "No rule of the system opens your trackpads and mice to Velotap yet.");
  EXPECT_FALSE(rows[0].inOrder);
}

TEST(GeneralPane, AFailedChangeOfTheLoginItemIsTold) {
  const LoginItemFailure failure = loginItemFailure("disk full", english());
  EXPECT_EQ(failure.alertTitle, "Could not update Launch at Login");
  EXPECT_EQ(failure.alertText, "disk full");
  EXPECT_EQ(failure.logLine, "login item toggle failed: disk full");
}

std::vector<std::string> synchronized(bool enabled, bool running) {
  std::vector<std::string> calls;
  synchronizeEnabledState({.refreshPermission = [&] { calls.emplace_back("refresh"); },
                           .enabled = [=] { return enabled; },
                           .listenersRunning = [=] { return running; },
                           .startController = [&] { calls.emplace_back("start"); }});
  return calls;
}

TEST(GeneralPane, SwitchingOnStartsListenersThatDoNotRun) {
  EXPECT_EQ(synchronized(true, false), (std::vector<std::string>{"refresh", "start"}));
  EXPECT_EQ(synchronized(true, true), (std::vector<std::string>{"refresh"}));
  EXPECT_EQ(synchronized(false, false), (std::vector<std::string>{"refresh"}));
}

}  // namespace
}  // namespace velotap
