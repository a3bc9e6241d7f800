#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "engine_fixture.hpp"
#include "gestures/touch_engine.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

class TapSession : public EngineTest {
 protected:
  bool clicked() {
    const Lines made = posted.take();
    EXPECT_TRUE(made.empty() || made == kMiddleClick);
    return !made.empty();
  }
};

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

// The echo of three-finger drag.

class ThreeFingerDrag : public TapSession {
 protected:
  void turnOn(const char* domain = "com.apple.AppleMultitouchTrackpad", Value value = 1) {
    systemPreferences.set(domain, "TrackpadThreeFingerDrag", std::move(value));
  }
  bool swallows() { return engine.shouldSwallowSyntheticLeftClick(true, false); }
};

TEST_F(ThreeFingerDrag, IsSwallowedOnceAfterATap) {
  turnOn();
  tap(pad, 3);
  EXPECT_TRUE(swallows());
  EXPECT_FALSE(swallows()) << "one tap has one echo";
}

TEST_F(ThreeFingerDrag, IsSwallowedForHalfASecond) {
  turnOn();
  tap(pad, 3, 0.125);
  time.set(0.125 + 0.5);
  EXPECT_FALSE(swallows()) << "exactly half a second later it is late";
  time.set(std::nextafter(0.625, 0.0));
  EXPECT_TRUE(swallows()) << "and the late one closed nothing";
}

TEST_F(ThreeFingerDrag, CountsInEitherDomain) {
  turnOn("com.apple.driver.AppleBluetoothMultitouch.trackpad");
  tap(pad, 3);
  EXPECT_TRUE(swallows());
}

TEST_F(ThreeFingerDrag, MustBeOn) {
  tap(pad, 3);
  EXPECT_FALSE(swallows());
  turnOn("com.apple.AppleMultitouchTrackpad", 0);
  time.advance(1);
  tap(pad, 3);
  EXPECT_FALSE(swallows());
  turnOn("com.apple.AppleMultitouchTrackpad", "1");
  time.advance(1);
  tap(pad, 3);
  EXPECT_FALSE(swallows());
}

TEST_F(ThreeFingerDrag, ConcernsNeitherFourFingersNorMice) {
  turnOn();
  set("padTap4", true);
  tap(pad, 4);
  EXPECT_TRUE(clicked());
  EXPECT_FALSE(swallows());
  time.advance(1);
  tap(mouse, 3);
  EXPECT_TRUE(clicked());
  EXPECT_FALSE(swallows());
}

TEST_F(ThreeFingerDrag, OnlyAClickOpensTheWindow) {
  turnOn();
  tap(pad, 3, 0.4);
  EXPECT_FALSE(swallows());
  tap(pad, 3, 0.05);
  EXPECT_TRUE(swallows());
  tap(pad, 3, 0.05);
  EXPECT_EQ(outcomes(), (Lines{"tooLong", "click", "tooSoon"}));
  EXPECT_FALSE(swallows());
}

TEST_F(ThreeFingerDrag, StoppingClosesTheWindow) {
  turnOn();
  tap(pad, 3);
  start();
  EXPECT_FALSE(swallows());
}

// Swipes.

class Swipe : public TapSession {
 protected:
  Swipe() {
    set("mouseSwipe3Nav", true);
    set("mouseTap3", false);
  }
  static constexpr float kSweep = 0.3125F;
  void swipe(float dx, float dy = 0, double seconds = 0.4) { swipeOn(mouse, dx, dy, seconds); }
  void swipeOn(const char* device, float dx, float dy = 0, double seconds = 0.4) {
    tap(device, 3, seconds, dx, dy);
  }
  const Lines back = {"key 33 down flags=1048576", "key 33 up flags=1048576"};
  const Lines forward = {"key 30 down flags=1048576", "key 30 up flags=1048576"};
};

TEST_F(Swipe, RightIsBackAndLeftIsForward) {
  swipe(0.3F, 0.1F);
  EXPECT_EQ(posted.take(), back);
  EXPECT_EQ(said.take().back(), "3-finger swipe back");
  swipe(-0.3F, 0.1F);
  EXPECT_EQ(posted.take(), forward);
  EXPECT_EQ(said.take().back(), "3-finger swipe forward");
  EXPECT_EQ(outcomes(), Lines{}) << "a swipe is no tap outcome";
}

TEST_F(Swipe, UsesTheKeysOfTheLayout) {
  keyboardLayout.select({{{5, "["}, {6, "]"}}});
  keyCodes.start();
  swipe(kSweep);
  EXPECT_EQ(posted.take(), (Lines{"key 5 down flags=1048576", "key 5 up flags=1048576"}));
}

TEST_F(Swipe, TooSteepIsNone) {
  swipe(0.3F, 0.2F);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(Swipe, ExactlyAQuarterIsNone) {
  // Two frames only, from a start that is exact in binary.
  const auto three = [](float dx) {
    return Frame{touch({.id = 1, .x = 0.25F + dx}), touch({.id = 2, .x = 0.375F + dx}),
                 touch({.id = 3, .x = 0.5F + dx})};
  };
  frame(mouse, three(0));
  frame(mouse, three(0.25F));
  lift(mouse);
  EXPECT_EQ(posted.take(), Lines{});
  frame(mouse, three(0));
  frame(mouse, three(0.2501F));
  lift(mouse);
  EXPECT_EQ(posted.take(), back);
}

TEST_F(Swipe, SixTenthsOfASecondIsTooLong) {
  swipe(kSweep, 0, 0.6);
  EXPECT_EQ(posted.take(), Lines{});
  time.set(0);
  swipe(kSweep, 0, std::nextafter(0.6, 0.0));
  EXPECT_EQ(posted.take(), back);
}

TEST_F(Swipe, IsIndependentOfTheTapDurationLimit) {
  set("maxTapDurationMs", 50);
  swipe(kSweep);
  EXPECT_EQ(posted.take(), back);
}

TEST_F(Swipe, NeverComesFromATrackpad) {
  swipeOn(pad, kSweep);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(Swipe, MustBeOnWhenTheSessionBegins) {
  set("mouseSwipe3Nav", false);
  frame(mouse, row(3));
  set("mouseSwipe3Nav", true);
  frame(mouse, row(3, kSweep));
  lift(mouse);
  EXPECT_EQ(posted.take(), Lines{});
  frame(mouse, row(3));
  set("mouseSwipe3Nav", false);
  frame(mouse, row(3, kSweep));
  lift(mouse);
  EXPECT_EQ(posted.take(), back);
}

TEST_F(Swipe, AFourthFingerAtAnyMomentSpoilsIt) {
  frame(mouse, row(3));
  frame(mouse, row(3, kSweep));
  frame(mouse, row(4, kSweep));
  lift(mouse);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(Swipe, FingersMayComeAndGoOneByOne) {
  frame(mouse, row(1));
  frame(mouse, row(2));
  frame(mouse, row(3));
  frame(mouse, row(3, kSweep));
  frame(mouse, row(2, kSweep));
  frame(mouse, row(1, kSweep));
  lift(mouse);
  EXPECT_EQ(posted.take(), back);
}

TEST_F(Swipe, APhysicalClickConsumesIt) {
  frame(mouse, row(3));
  engine.notePhysicalButtonDown();
  frame(mouse, row(3, kSweep));
  lift(mouse);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(Swipe, IsNotHeldBackByAPhysicalClickBefore) {
  engine.notePhysicalButtonDown();
  swipe(kSweep, 0, 0.1);
  EXPECT_EQ(posted.take(), back);
}

TEST_F(Swipe, IsNotHeldBackByAClickJustBefore) {
  tap(pad, 3);
  posted.take();
  swipe(kSweep, 0, 0.01);
  EXPECT_EQ(posted.take(), back);
}

TEST_F(Swipe, IsDeliveredOnlyToWhoIsStillInFront) {
  frame(mouse, row(3));
  frame(mouse, row(3, kSweep));
  workspace.setLive(AppId::intern(kBrowser));
  lift(mouse);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(Swipe, DoesNothingOverThePracticeTarget) {
  activate(kOwnApp);
  practice.set(Rect{0, 0, 2000, 2000});
  swipe(kSweep);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(Swipe, APostedSwipeIsNoTapEvenWhereATapMayDriftThatFar) {
  set("mouseTap3", true);
  set("maxTapDrift", 1.0);
  swipe(kSweep, 0, 0.2);
  EXPECT_EQ(posted.take(), back);
  EXPECT_EQ(outcomes(), Lines{});
}

TEST_F(Swipe, WhatFailsAsASwipeMayBeATap) {
  set("mouseTap3", true);
  set("maxTapDrift", 1.0);
  swipe(kSweep, kSweep, 0.2);
  EXPECT_EQ(posted.take(), kMiddleClick) << "too steep for a swipe";
  time.advance(1);
  activate(kOwnApp);
  practice.set(Rect{0, 0, 2000, 2000});
  swipe(kSweep, 0, 0.2);
  EXPECT_EQ(posted.take(), kMiddleClick) << "a swipe may not be practised, a tap may";
}

TEST_F(Swipe, AKeyThatCannotBeMadeIsNotATapInstead) {
  set("mouseTap3", true);
  set("maxTapDrift", 1.0);
  events.setKeyFailure([](bool down) { return !down; });
  swipe(kSweep, 0, 0.2);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
}

}  // namespace
}  // namespace velotap
