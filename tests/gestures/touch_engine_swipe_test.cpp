#include <gtest/gtest.h>

#include <cmath>

#include "tap_session_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

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
