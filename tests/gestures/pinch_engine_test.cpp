#include "gestures/pinch_engine.hpp"

#include <gtest/gtest.h>

#include "pinch_engine_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

TEST_F(PinchEngineTest, AStillSpreadOfFiveMillimetresPinches) {
  process(pair(20));
  EXPECT_FALSE(pinch.isPinching());
  process(pair(25));
  EXPECT_TRUE(pinch.isPinching());
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
  EXPECT_EQ(said.take(), Lines{"pinch began (d0=20.0mm, keystrokes=false)"});
  process(pair(26));
  EXPECT_EQ(gestures(), Lines{"magnify 2 0.020"}) << "half of one in twenty-five";
  process(pair(26));
  EXPECT_EQ(gestures(), Lines{"magnify 2 0.010"});
  process(pair(20));
  EXPECT_EQ(gestures(), Lines{"magnify 2 -0.100"}) << "never more than a tenth";
  lift();
  EXPECT_FALSE(pinch.isPinching());
  EXPECT_EQ(gestures(), Lines{"magnify 4 0.000"});
  EXPECT_EQ(said.take(), Lines{"pinch ended"});
}

TEST_F(PinchEngineTest, SqueezingPinchesToo) {
  process(pair(40));
  process(pair(35));
  process(pair(34));
  EXPECT_EQ(gestures(), (Lines{"magnify 1 0.000", "magnify 2 -0.014"}));
}

TEST_F(PinchEngineTest, SlowSpreadingPinchesOnceItIsFarEnough) {
  for (double distance = 20; distance <= 23; distance += 0.5) process(pair(distance));
  EXPECT_EQ(gestures(), Lines{});
  process(pair(23.5));
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, SensitivityIsReadAtEveryStep) {
  beginPinch();
  gestures();
  set("pinchSensitivity", 2.0);
  process(pair(26));
  EXPECT_EQ(gestures(), Lines{"magnify 2 0.040"});
  set("pinchSensitivity", 0.5);
  process(pair(26));
  EXPECT_EQ(gestures(), Lines{"magnify 2 0.005"});
}

TEST_F(PinchEngineTest, EventsStayWhereThePointerWasAtTheBeginning) {
  beginPinch();
  events.setPointer(Point{1, 2});
  process(pair(27));
  lift();
  for (const GestureEvent& event : posted.takeGestures()) {
    EXPECT_EQ(event.location, (Point{512, 384.5}));
  }
  beginRotation();
  for (const GestureEvent& event : posted.takeGestures()) {
    EXPECT_EQ(event.location, (Point{1, 2}));
  }
}

TEST_F(PinchEngineTest, WithoutAPointerEventsGoToTheOrigin) {
  events.setPointer(std::nullopt);
  beginPinch();
  const Gestures begun = posted.takeGestures();
  ASSERT_EQ(begun.size(), 1U);
  EXPECT_EQ(begun[0].location, (Point{0, 0}));
}

TEST_F(PinchEngineTest, FingersOnTopOfEachOtherGiveNoStep) {
  process(pair(10));
  process(pair(0.25));
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
  process(pair(20));
  EXPECT_EQ(gestures(), Lines{}) << "from nothing there is no proportion";
  process(pair(21));
  EXPECT_EQ(gestures(), Lines{"magnify 2 0.025"});
}

TEST_F(PinchEngineTest, ADriftingSpreadIsRejectedForTheRestOfTheContact) {
  process(pair(20));
  process(pair(25, 0, 54));
  EXPECT_EQ(gestures(), Lines{});
  process(pair(60));
  process(pair(30, 40));
  EXPECT_EQ(gestures(), Lines{});
  lift();
  beginPinch();
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
  EXPECT_EQ(said.take(), Lines{"pinch began (d0=20.0mm, keystrokes=false)"})
      << "a rejected pair ends without a word";
}

TEST_F(PinchEngineTest, APairOnTheEdgeOrInFlightIsRejectedAtOnce) {
  Fingers atEdge = pair(20);
  atEdge[0].pos.x = 0.05F;
  process(atEdge);
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{}) << "moving inwards does not help";
  lift();
  Fingers flying = pair(20);
  flying[1].velocity = {-2, 2};
  process(flying);
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{});
  lift();
  Fingers good = pair(20);
  good[0].pos.x = 0.051F;
  good[1].velocity = {-2, 1.99F};
  process(good);
  Fingers atEdgeLater = pair(25);
  atEdgeLater[0].pos.x = 0;
  process(atEdgeLater);
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"}) << "only the beginning counts";
}

TEST_F(PinchEngineTest, TurningByThirteenDegreesRotates) {
  process(pair(30));
  process(pair(30, 11.9));
  EXPECT_FALSE(pinch.isPinching());
  process(pair(30, 13));
  EXPECT_TRUE(pinch.isPinching());
  EXPECT_EQ(said.take(), Lines{"rotate began"});
  process(pair(30, 15.5));
  process(pair(30, 10));
  EXPECT_EQ(gestures(), (Lines{"rotate 1 0.000", "rotate 2 2.500", "rotate 2 -5.500"}));
  lift();
  EXPECT_EQ(gestures(), Lines{"rotate 4 0.000"});
  EXPECT_EQ(said.take(), Lines{"rotate ended"});
}

TEST_F(PinchEngineTest, TurningAcrossTheSeamOfTheAnglesIsOneTurn) {
  process(pair(30, 175));
  process(pair(30, 181));
  process(pair(30, 188.5));
  EXPECT_EQ(gestures(), Lines{"rotate 1 0.000"});
  process(pair(30, 178));
  EXPECT_EQ(gestures(), Lines{"rotate 2 -10.500"});
}

TEST_F(PinchEngineTest, TurningThereAndBackIsNoRotation) {
  process(pair(30));
  for (int i = 0; i < 20; ++i) {
    process(pair(30, 10));
    process(pair(30, -1));
  }
  EXPECT_EQ(gestures(), Lines{});
}

TEST_F(PinchEngineTest, ATurnWithADriftingHandIsNoRotationYet) {
  process(pair(30));
  process(pair(30, 20, 53));
  EXPECT_EQ(gestures(), Lines{});
  process(pair(30, 20, 50));
  EXPECT_EQ(gestures(), Lines{"rotate 1 0.000"}) << "it may still become one";
}

TEST_F(PinchEngineTest, AGestureNeverChangesItsKind) {
  beginPinch();
  process(pair(25, 60));
  process(pair(25, 90));
  beginRotation();
  lift();
  for (const std::string& event : gestures()) EXPECT_EQ(event.substr(0, 7), "magnify") << event;
  beginRotation();
  process(pair(60, 13));
  process(pair(10, 13));
  lift();
  for (const std::string& event : gestures()) EXPECT_EQ(event.substr(0, 6), "rotate") << event;
}

TEST_F(PinchEngineTest, WithPinchingOffASpreadIsRejectedAndATurnStillRotates) {
  set("mousePinchZoom", false);
  process(pair(30));
  process(pair(35));
  process(pair(30, 20));
  EXPECT_EQ(gestures(), Lines{});
  lift();
  beginRotation();
  EXPECT_EQ(gestures(), Lines{"rotate 1 0.000"});
}

TEST_F(PinchEngineTest, WithRotatingOffATurnStaysUndecided) {
  set("mouseRotate", false);
  process(pair(30));
  process(pair(30, 40));
  EXPECT_EQ(gestures(), Lines{});
  process(pair(36, 40));
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

// Several devices, suspending, cancelling.

TEST_F(PinchEngineTest, EachDeviceHasItsOwnGesture) {
  beginPinch(first);
  process(pair(30), second);
  process(pair(30, 13), second);
  EXPECT_EQ(gestures(), (Lines{"magnify 1 0.000", "rotate 1 0.000"}));
  process(three(), first);
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"});
  EXPECT_TRUE(pinch.isPinching());
  process(pair(30, 14), second);
  lift(second);
  EXPECT_EQ(gestures(), (Lines{"rotate 2 1.000", "rotate 4 0.000"}));
  EXPECT_FALSE(pinch.isPinching());
}

TEST_F(PinchEngineTest, ABlockedDeviceIsNotForgottenForAnother) {
  process(three(), first);
  beginPinch(second);
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
  beginPinch(first);
  EXPECT_EQ(gestures(), Lines{});
  lift(first);
  beginPinch(first);
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, ManyDevicesAtOnce) {
  std::vector<int> devices(40);
  for (int& device : devices) beginPinch(&device);
  EXPECT_EQ(gestures().size(), 40U);
  for (int& device : devices) process(pair(26), &device);
  EXPECT_EQ(gestures(), Lines(40, "magnify 2 0.020"));
  for (int& device : devices) lift(&device);
  EXPECT_EQ(gestures(), Lines(40, "magnify 4 0.000"));
}

TEST_F(PinchEngineTest, CancelAllEndsEveryGestureAndBlocksNobody) {
  beginPinch(first);
  process(pair(30), second);
  process(pair(30, 13), second);
  gestures();
  pinch.cancelAll();
  EXPECT_EQ(gestures(), (Lines{"magnify 8 0.000", "rotate 8 0.000"}));
  EXPECT_FALSE(pinch.isPinching());
  pinch.cancelAll();
  EXPECT_EQ(gestures(), Lines{});
  beginPinch(first);
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, CancelAllKeepsABlockedDeviceBlocked) {
  process(three());
  pinch.cancelAll();
  beginPinch();
  EXPECT_EQ(gestures(), Lines{});
}

TEST_F(PinchEngineTest, SuspendingCancelsAndBlocksWhileFingersAreDown) {
  beginPinch();
  gestures();
  pinch.suspend(first, true);
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"});
  beginPinch();
  EXPECT_EQ(gestures(), Lines{});
  pinch.suspend(first, false);
  beginPinch();
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"}) << "an empty frame clears the mark";
}

TEST_F(PinchEngineTest, SuspendingWithoutFingersCancelsOnly) {
  beginPinch();
  gestures();
  pinch.suspend(first, false);
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"});
  beginPinch();
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, SuspendingOneDeviceLeavesTheOther) {
  beginPinch(first);
  beginPinch(second);
  gestures();
  pinch.suspend(first, true);
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"});
  EXPECT_TRUE(pinch.isPinching());
}

TEST_F(PinchEngineTest, SaysNothingWhenNobodyAsked) {
  log.setEnabled(false);
  beginPinch();
  lift();
  beginRotation();
  process(three());
  EXPECT_EQ(said.take(), Lines{});
}

}  // namespace
}  // namespace velotap
