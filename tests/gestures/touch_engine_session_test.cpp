#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "gestures/touch_engine.hpp"
#include "tap_session_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

// Who answers three fingers on a trackpad.

struct AnswerCase {
  const char* name;
  const char* setting;
  bool desktopClicks;
  bool ours;
};

class TapAnsweredBy : public TapSession, public ::testing::WithParamInterface<AnswerCase> {};

TEST_P(TapAnsweredBy, Session) {
  const AnswerCase& c = GetParam();
  set("padThreeFingerMode", c.setting);
  set("padTap4", true);
  systemPreferences.setDesktopClicksFor(TrackpadGesture::threeFingerTap, c.desktopClicks);
  systemPreferences.setDesktopClicksFor(TrackpadGesture::threeFingerClick, !c.desktopClicks);
  tap(pad, 3);
  EXPECT_EQ(clicked(), c.ours);
  EXPECT_EQ(outcomes(), c.ours ? Lines{"click"} : Lines{});
  time.advance(1);
  tap(pad, 3, 0.4);
  EXPECT_EQ(outcomes(), c.ours ? Lines{"tooLong"} : Lines{}) << "whose limits were missed";
  time.advance(1);
  tap(pad, 4);
  EXPECT_TRUE(clicked()) << "four fingers are always ours";
  time.advance(1);
  tap(mouse, 3);
  EXPECT_TRUE(clicked()) << "no desktop knows of fingers on a mouse";
}

const AnswerCase kAnswerCases[] = {
    {"automaticWithoutDesktop", "automatic", false, true},
    {"automaticWithDesktop", "automatic", true, false},
    {"unknownTextWithDesktop", "Post", true, false},
    {"unknownTextWithoutDesktop", "Native", false, true},
    {"nativeWithoutDesktop", "native", false, false},
    {"nativeWithDesktop", "native", true, false},
    {"postWithoutDesktop", "post", false, true},
    {"postWithDesktop", "post", true, true},
};

INSTANTIATE_TEST_SUITE_P(Cases, TapAnsweredBy, ::testing::ValuesIn(kAnswerCases),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(TapSession, ADesktopThatBeginsToAnswerGetsTheNextTap) {
  frame(pad, row(3));
  systemPreferences.setDesktopClicksFor(TrackpadGesture::threeFingerTap, true);
  lift(pad);
  EXPECT_TRUE(clicked());
  time.advance(1);
  tap(pad, 3);
  EXPECT_FALSE(clicked());
  systemPreferences.setDesktopClicksFor(TrackpadGesture::threeFingerTap, false);
  tap(pad, 3);
  EXPECT_TRUE(clicked()) << "nothing of ours came before that it could be too soon after";
}

// Limits, one tap for each case.

struct LimitCase {
  const char* name;
  double seconds;
  float drift;
  Lines outcomes;
};

class TapLimitsOf : public TapSession, public ::testing::WithParamInterface<LimitCase> {};

TEST_P(TapLimitsOf, Session) {
  const LimitCase& c = GetParam();
  set("maxTapDrift", 0.0625);
  tap(pad, 3, c.seconds, c.drift);
  EXPECT_EQ(clicked(), c.outcomes == Lines{"click"});
  EXPECT_EQ(outcomes(), c.outcomes);
}

const LimitCase kLimitCases[] = {
    {"instant", 0, 0, {"click"}},
    {"shorter", 0.299, 0, {"click"}},
    {"exactDuration", 0.3, 0, {"click"}},
    {"longer", 0.301, 0, {"tooLong"}},
    {"nearMissOfDuration", 0.599, 0, {"tooLong"}},
    {"farthestNearMissOfDuration", 0.6, 0, {"tooLong"}},
    {"longPress", 0.601, 0, {}},
    {"veryLongPress", 3600, 0, {}},
    {"lessDrift", 0.1, 0.03125F, {"click"}},
    {"exactDrift", 0.1, 0.0625F, {"click"}},
    {"moreDrift", 0.1, 0.078125F, {"moved"}},
    {"farthestNearMissOfDrift", 0.1, 0.25F, {"moved"}},
    {"scroll", 0.1, 0.2578125F, {}},
    {"backwards", 0.1, -0.078125F, {"moved"}},
    {"longAndMoved", 0.4, 0.078125F, {"tooLong"}},
    {"longAndScrolled", 0.4, 0.3F, {}},
    {"veryLongAndMoved", 0.7, 0.078125F, {}},
};

INSTANTIATE_TEST_SUITE_P(Cases, TapLimitsOf, ::testing::ValuesIn(kLimitCases),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(TapSession, BothDirectionsAddUp) {
  set("maxTapDrift", 0.0625);
  tap(pad, 3, 0.1, 0.03125F, 0.03125F);
  EXPECT_TRUE(clicked());
  time.advance(1);
  tap(pad, 3, 0.1, 0.046875F, 0.046875F);
  EXPECT_FALSE(clicked());
}

TEST_F(TapSession, DefaultDriftOfTwentyOneHundredthsIsNotLogged) {
  tap(pad, 3, 0.1, 0.19F);
  EXPECT_EQ(outcomes(), Lines{"moved"});
  tap(pad, 3, 0.1, 0.21F);
  EXPECT_EQ(outcomes(), Lines{});
}

TEST_F(TapSession, WithATinyDriftLimitMissesUpToAFiftiethAreLogged) {
  set("maxTapDrift", 0.0);
  tap(pad, 3, 0.1, 0.019F);
  EXPECT_EQ(outcomes(), Lines{"moved"});
  tap(pad, 3, 0.1, 0.021F);
  EXPECT_EQ(outcomes(), Lines{});
}

// Triggers.

struct TriggerCase {
  const char* name;
  bool onMouse;
  int fingers;
  const char* onlyOn;  ///< the only tap trigger that is on
  bool clicks;
};

class TapTriggerOf : public TapSession, public ::testing::WithParamInterface<TriggerCase> {};

TEST_P(TapTriggerOf, Session) {
  const TriggerCase& c = GetParam();
  for (const char* key : {"mouseTap3", "padTap3", "padTap4"})
    set(key, key == std::string(c.onlyOn));
  tap(c.onMouse ? mouse : pad, c.fingers);
  EXPECT_EQ(clicked(), c.clicks);
  EXPECT_EQ(outcomes(), c.clicks ? Lines{"click"} : Lines{});
}

const TriggerCase kTriggerCases[] = {
    {"padThree", false, 3, "padTap3", true},
    {"padFourWithOnlyThree", false, 4, "padTap3", false},
    {"padFour", false, 4, "padTap4", true},
    {"padThreeWithOnlyFour", false, 3, "padTap4", false},
    {"padThreeWithMouse", false, 3, "mouseTap3", false},
    {"padOne", false, 1, "padTap3", false},
    {"padTwo", false, 2, "padTap3", false},
    {"padFive", false, 5, "padTap4", false},
    {"padSixteen", false, 16, "padTap3", false},
    {"mouseThree", true, 3, "mouseTap3", true},
    {"mouseThreeWithPad", true, 3, "padTap3", false},
    {"mouseFour", true, 4, "mouseTap3", false},
    {"mouseFourWithPadFour", true, 4, "padTap4", false},
    {"mouseTwo", true, 2, "mouseTap3", false},
};

INSTANTIATE_TEST_SUITE_P(Cases, TapTriggerOf, ::testing::ValuesIn(kTriggerCases),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(TapSession, ThreeAndFourMayBothTap) {
  set("padTap4", true);
  tap(pad, 4);
  EXPECT_TRUE(clicked());
  time.advance(1);
  tap(pad, 3);
  EXPECT_TRUE(clicked());
}

TEST_F(TapSession, TheLargestCountDecides) {
  frame(pad, row(2));
  frame(pad, row(3));
  frame(pad, row(1));
  lift(pad);
  EXPECT_TRUE(clicked());
  time.advance(1);
  frame(pad, row(3));
  frame(pad, row(4));
  frame(pad, row(3));
  lift(pad);
  EXPECT_FALSE(clicked()) << "four fingers with only three enabled";
}

TEST_F(TapSession, AFingerThatComesBackUnderANewNameIsNoDrift) {
  frame(pad, row(3));
  Frame returned = row(3);
  returned[0] = touch({.id = 40, .x = 0.9F, .y = 0.9F});
  frame(pad, returned);
  lift(pad);
  EXPECT_TRUE(clicked());
}

// What a running session no longer learns.

TEST_F(TapSession, SettingsAreFixedWhenItBegins) {
  frame(pad, row(3));
  set("padTap3", false);
  set("maxTapDurationMs", 50);
  set("maxTapDrift", 0.0);
  time.advance(0.25);
  frame(pad, row(3, 0.03F));
  lift(pad);
  EXPECT_TRUE(clicked());
  const auto items = activity.items();
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(items[0].maxDuration, 0.3);
  EXPECT_EQ(items[0].maxDrift, 0.05);
  time.advance(1);
  tap(pad, 3);
  EXPECT_FALSE(clicked()) << "the next one obeys";
}

TEST_F(TapSession, ATriggerTurnedOnLaterComesTooLate) {
  set("padTap3", false);
  frame(pad, row(3));
  set("padTap3", true);
  lift(pad);
  EXPECT_FALSE(clicked());
}

TEST_F(TapSession, TheMasterSwitchIsNotFixed) {
  frame(pad, row(3));
  set("enabled", false);
  lift(pad);
  EXPECT_FALSE(clicked());
}

// Neighbours in time.

TEST_F(TapSession, ASecondTapTooSoonIsRefusedAndNamed) {
  tap(pad, 3, 0.05);
  time.advance(0.03);
  tap(pad, 3, 0.05);
  EXPECT_EQ(outcomes(), (Lines{"click", "tooSoon"})) << "80 ms apart";
  EXPECT_TRUE(clicked());
  EXPECT_FALSE(clicked());
}

TEST_F(TapSession, ASecondTapLateEnoughClicksAgain) {
  tap(pad, 3, 0.05);
  EXPECT_TRUE(clicked());
  time.advance(0.05);
  tap(pad, 3, 0.05);
  EXPECT_EQ(outcomes(), (Lines{"click", "click"})) << "100 ms apart";
  EXPECT_TRUE(clicked());
}

TEST_F(TapSession, ARefusedTapDoesNotPushTheNextOneBack) {
  tap(pad, 3, 0.05);
  time.advance(0.01);
  tap(pad, 3, 0.05);
  time.advance(0.01);
  tap(pad, 3, 0.05);
  EXPECT_EQ(outcomes(), (Lines{"click", "tooSoon", "click"}));
}

TEST_F(TapSession, TooSoonCountsAcrossDevicesAndRestarts) {
  tap(pad, 3, 0.05);
  start();
  lift(mouse);
  tap(mouse, 3, 0.05);
  EXPECT_EQ(outcomes(), (Lines{"click", "tooSoon"}));
}

TEST_F(TapSession, APhysicalClickDuringTheSessionCancelsItSilently) {
  frame(pad, row(3));
  engine.notePhysicalButtonDown();
  time.advance(0.1);
  lift(pad);
  EXPECT_FALSE(clicked());
  EXPECT_EQ(outcomes(), Lines{});
}

TEST_F(TapSession, APhysicalClickLongAgoInTheSameSessionStillCancels) {
  set("maxTapDurationMs", 2000);
  frame(pad, row(3));
  engine.notePhysicalButtonDown();
  set("maxTapDurationMs", 50);
  time.advance(1.9);
  lift(pad);
  EXPECT_FALSE(clicked());
  tap(pad, 3);
  EXPECT_FALSE(clicked()) << "1.9 s + 0.125 s later by the limit of that session, 50 ms";
}

TEST_F(TapSession, APhysicalClickShortlyBeforeTheEndCancelsSilently) {
  set("maxTapDurationMs", 250);
  engine.notePhysicalButtonDown();
  time.advance(0.125);
  tap(pad, 3, 0.125);
  EXPECT_FALSE(clicked()) << "exactly the limit before the end";
  EXPECT_EQ(outcomes(), Lines{});
}

TEST_F(TapSession, APhysicalClickEarlierThanThatDoesNotMatter) {
  set("maxTapDurationMs", 250);
  engine.notePhysicalButtonDown();
  time.advance(0.1328125);
  tap(pad, 3, 0.125);
  EXPECT_TRUE(clicked());
}

TEST_F(TapSession, AMissBesideAPhysicalClickIsStillAMiss) {
  engine.notePhysicalButtonDown();
  tap(pad, 3, 0.1, 0.1F);
  EXPECT_EQ(outcomes(), Lines{"moved"});
}

TEST_F(TapSession, APhysicalClickConsumesEveryRunningSession) {
  frame(pad, row(3));
  frame(mouse, row(3));
  engine.notePhysicalButtonDown();
  time.advance(0.5);
  lift(pad);
  lift(mouse);
  EXPECT_EQ(outcomes(), Lines{});
  time.advance(1);
  tap(pad, 3);
  tap(mouse, 3, 0.25);
  EXPECT_EQ(outcomes(), (Lines{"click", "click"})) << "only the running ones";
}

TEST_F(TapSession, APinchOnAnotherDeviceCancelsSilently) {
  frame(mouse, {touch({.id = 1, .x = 0.4F}), touch({.id = 2, .x = 0.6F})});
  frame(mouse, {touch({.id = 1, .x = 0.35F}), touch({.id = 2, .x = 0.65F})});
  ASSERT_TRUE(pinch.isPinching());
  tap(pad, 3);
  EXPECT_FALSE(clicked());
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3, 0.4);
  EXPECT_EQ(outcomes(), Lines{"tooLong"}) << "a miss is still a miss";
}

// Who is in front at the end.

TEST_F(TapSession, ATapForAnApplicationThatJustWentAwayIsDroppedSilently) {
  frame(pad, row(3));
  workspace.setLive(AppId::intern(kBrowser));
  lift(pad);
  EXPECT_FALSE(clicked());
  EXPECT_EQ(outcomes(), Lines{});
  workspace.setLive(AppId::intern(kEditor));
  tap(pad, 3);
  EXPECT_TRUE(clicked()) << "and leaves no trace in the spacing of clicks";
}

TEST_F(TapSession, AMissIsAMissWhoeverIsInFront) {
  frame(pad, row(3));
  workspace.setLive(AppId::intern(kBrowser));
  time.advance(0.4);
  lift(pad);
  EXPECT_EQ(outcomes(), Lines{"tooLong"});
}

TEST_F(TapSession, ATapThatCannotBePostedStillCounts) {
  events.setMouseFailure([](MouseEventType) { return true; });
  tap(pad, 3, 0.05);
  EXPECT_FALSE(clicked());
  EXPECT_EQ(outcomes(), Lines{"click"});
  events.setMouseFailure({});
  tap(pad, 3, 0.05);
  EXPECT_EQ(outcomes(), Lines{"tooSoon"});
}

// What is recorded and said.

TEST_F(TapSession, TheRecordTellsEverything) {
  set("maxTapDurationMs", 250);
  set("maxTapDrift", 0.125);
  time.set(100);
  tap(mouse, 3, 0.1875, 0.0625F, 0.03125F);
  const auto items = activity.items();
  ASSERT_EQ(items.size(), 1U);
  const TapActivity& item = items[0];
  EXPECT_EQ(item.id, 1);
  EXPECT_EQ(item.date, time.date());
  EXPECT_EQ(item.deviceClass, DeviceClass::magicMouse);
  EXPECT_EQ(item.fingers, 3);
  EXPECT_DOUBLE_EQ(item.duration, 0.1875);
  EXPECT_NEAR(item.drift, 0.09375, 1e-6);
  EXPECT_EQ(item.maxDuration, 0.25);
  EXPECT_EQ(item.maxDrift, 0.125);
  EXPECT_EQ(item.outcome, Outcome::click);
}

TEST_F(TapSession, TheEndIsSaidWithItsMeasurements) {
  tap(pad, 3, 0.125, 0.03125F);
  EXPECT_EQ(said.take(), (Lines{"session end (trackpad): maxFingers=3 duration=125ms drift=0.031",
                                "posted middle click at (512.0, 384.5)"}));
  tap(mouse, 1, 2.5);
  EXPECT_EQ(said.take(),
            Lines{"session end (magicMouse): maxFingers=1 duration=2500ms drift=0.000"});
}

TEST_F(TapSession, MillisecondsAreCutOff) {
  tap(pad, 1, 0.1999);
  EXPECT_EQ(said.take(), Lines{"session end (trackpad): maxFingers=1 duration=199ms drift=0.000"});
}

TEST_F(TapSession, AnAbandonedSessionSaysNothing) {
  frame(pad, row(3));
  activate(kBrowser);
  lift(pad);
  EXPECT_EQ(said.take(), Lines{});
}

TEST_F(TapSession, SaysNothingWhenNobodyAsked) {
  log.setEnabled(false);
  tap(pad, 3);
  EXPECT_EQ(said.take(), Lines{});
  EXPECT_TRUE(clicked());
}

}  // namespace
}  // namespace velotap
