#include "gestures/pinch_engine.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "engine_fixture.hpp"
#include "fingers.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

class PinchEngineTest : public ::testing::Test, protected EngineKit {
 protected:
  using Gestures = std::vector<GestureEvent>;

  PinchEngineTest() { set("mouseRotate", true); }

  /// Two firm fingers, `distance` millimetres apart at `degrees`, their midpoint at (x, y).
  static Fingers pair(double distance, double degrees = 0, double x = 50, double y = 50) {
    const double angle = degrees * std::numbers::pi / 180;
    const double dx = distance / 2 * std::cos(angle);
    const double dy = distance / 2 * std::sin(angle);
    Fingers result = fingers({finger(1, 0.4F, 0.5F), finger(2, 0.6F, 0.5F)});
    result[0].mmPos = {static_cast<float>(x - dx), static_cast<float>(y - dy)};
    result[1].mmPos = {static_cast<float>(x + dx), static_cast<float>(y + dy)};
    return result;
  }
  void process(const Fingers& frame, MTDevice device = nullptr) {
    pinch.process(device == nullptr ? first : device, frame, context);
  }
  void lift(MTDevice device = nullptr) { process(Fingers(), device); }
  void beginPinch(MTDevice device = nullptr) {
    process(pair(20), device);
    process(pair(25), device);
  }
  void beginRotation() {
    process(pair(30));
    process(pair(30, 13));
  }
  /// "magnify 1 0.000" …
  Lines gestures() {
    Lines result;
    for (const GestureEvent& event : posted.takeGestures()) {
      result.push_back((event.kind == GestureKind::magnify ? "magnify " : "rotate ") +
                       std::to_string(static_cast<int>(event.phase)) + " " +
                       fixedText(event.value, 3));
    }
    return result;
  }
  static Fingers three() {
    return fingers({finger(1, 0.3F, 0.5F), finger(2, 0.5F, 0.5F), finger(3, 0.7F, 0.5F)});
  }

  int firstDevice = 0;
  int secondDevice = 0;
  MTDevice first = &firstDevice;
  MTDevice second = &secondDevice;
  PinchEngine::Context context{AppId::intern(kEditor), false};
};

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

TEST_F(PinchEngineTest, LiftingOneFingerBeforeTheOtherCancels) {
  beginPinch();
  gestures();
  said.take();
  process(fingers({finger(1, 0.4F, 0.5F)}));
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"});
  EXPECT_EQ(said.take(), Lines{"pinch cancelled"});
  process(pair(20));
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{}) << "not before every finger has lifted";
  lift();
  beginPinch();
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, AThirdFingerCancels) {
  beginPinch();
  gestures();
  process(three());
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"});
  process(pair(20));
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{});
  lift();
  EXPECT_EQ(gestures(), Lines{});
  beginPinch();
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, AThirdFingerCancelsHoweverLight) {
  beginRotation();
  gestures();
  Fingers withLightThird = pair(30, 13);
  Finger light = finger(3, 0.9F, 0.5F);
  light.zTotal = 0.1F;
  withLightThird.push(light);
  process(withLightThird);
  EXPECT_EQ(gestures(), Lines{"rotate 8 0.000"});
  EXPECT_EQ(said.take().back(), "rotate cancelled");
}

TEST_F(PinchEngineTest, AFingerThatBecomesLightCancels) {
  beginPinch();
  gestures();
  Fingers light = pair(26);
  light[1].zDensity = 0.375F;
  process(light);
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"});
}

TEST_F(PinchEngineTest, AnotherFingerInsteadOfOneCancels) {
  beginPinch();
  gestures();
  Fingers changed = pair(26);
  changed[1].id = 7;
  process(changed);
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"});
}

TEST_F(PinchEngineTest, TheOrderOfTheFingersDoesNotMatter) {
  const auto swapped = [](const Fingers& f) { return fingers({f[1], f[0]}); };
  process(pair(30));
  process(swapped(pair(30, 13)));
  process(pair(30, 14));
  process(swapped(pair(30, 15)));
  EXPECT_EQ(gestures(), (Lines{"rotate 1 0.000", "rotate 2 1.000", "rotate 2 1.000"}));
}

TEST_F(PinchEngineTest, OneFingerAloneIsWaitedFor) {
  process(fingers({finger(1, 0.4F, 0.5F)}));
  beginPinch();
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, ALightPairIsWaitedFor) {
  Fingers light = pair(15);
  light[0].zTotal = 0.25F;
  process(light);
  beginPinch();
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, ThreeFingersFirstBlockTheDeviceUntilTheyLift) {
  process(three());
  process(pair(20));
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{});
  lift();
  process(pair(20));
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, ARejectedPairThatLosesAFingerBlocksTheDevice) {
  process(pair(20));
  process(pair(25, 0, 54));
  process(fingers({finger(1, 0.4F, 0.5F)}));
  process(pair(20));
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_EQ(said.take(), Lines{});
}

TEST_F(PinchEngineTest, AnotherApplicationCancels) {
  beginPinch();
  gestures();
  context.bundleID = AppId::intern(kBrowser);
  process(pair(26));
  EXPECT_EQ(gestures(), Lines{"magnify 8 0.000"}) << "the old one is still in front, live";
  context.bundleID = AppId::intern(kEditor);
  process(pair(20));
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{});
}

TEST_F(PinchEngineTest, AnotherApplicationCancelsAnUndecidedPairToo) {
  process(pair(20));
  context.bundleID = AppId::intern(kBrowser);
  process(pair(20));
  context.bundleID = AppId::intern(kEditor);
  process(pair(20));
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{});
}

TEST_F(PinchEngineTest, ARefusedDeliveryEndsWithoutAWordToAnybody) {
  beginPinch();
  gestures();
  said.take();
  workspace.setLive(AppId::intern(kBrowser));
  process(pair(26));
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_EQ(said.take(), Lines{"pinch cancelled"});
  workspace.setLive(AppId::intern(kEditor));
  process(pair(30));
  EXPECT_EQ(gestures(), Lines{});
  lift();
  beginPinch();
  EXPECT_EQ(gestures(), Lines{"magnify 1 0.000"});
}

TEST_F(PinchEngineTest, AnEndThatMayNotBeDeliveredIsNotPosted) {
  beginPinch();
  gestures();
  said.take();
  workspace.setLive(AppId::intern(kBrowser));
  lift();
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_EQ(said.take(), Lines{"pinch ended"});
  EXPECT_FALSE(pinch.isPinching());
}

TEST_F(PinchEngineTest, AnIgnoredApplicationGetsNoMore) {
  beginPinch();
  gestures();
  config.setIgnoredApps({kEditor});
  process(pair(26));
  lift();
  EXPECT_EQ(gestures(), Lines{});
}

TEST_F(PinchEngineTest, TurningTheGesturesSettingOffCancels) {
  beginPinch();
  set("mousePinchZoom", false);
  process(pair(26));
  EXPECT_EQ(gestures(), (Lines{"magnify 1 0.000", "magnify 8 0.000"}));
  lift();
  beginRotation();
  set("mouseRotate", false);
  process(pair(30, 14));
  EXPECT_EQ(gestures(), (Lines{"rotate 1 0.000", "rotate 8 0.000"}));
}

TEST_F(PinchEngineTest, TurningTheOtherSettingOffDoesNothing) {
  beginPinch();
  set("mouseRotate", false);
  process(pair(26));
  EXPECT_EQ(gestures(), (Lines{"magnify 1 0.000", "magnify 2 0.020"}));
}

// Keystrokes.

class KeystrokeZoom : public PinchEngineTest {
 protected:
  KeystrokeZoom() { context.usesKeystrokeZoom = true; }
  int presses(const char* line) {
    int count = 0;
    for (const std::string& event : posted.take()) count += event == line ? 1 : 0;
    return count;
  }
  static constexpr const char* kIn = "key 24 down flags=1048576";
  static constexpr const char* kOut = "key 27 down flags=1048576";
};

TEST_F(KeystrokeZoom, PostsKeystrokesAndNoMagnifyEvent) {
  beginPinch();
  EXPECT_EQ(said.take(), Lines{"pinch began (d0=20.0mm, keystrokes=true)"});
  for (const double distance : {30.0, 40.0, 50.0}) process(pair(distance));
  EXPECT_EQ(posted.take().front(), kIn);
  lift();
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_EQ(said.take(), Lines{"pinch ended"});
}

TEST_F(KeystrokeZoom, OnceForEachTwelveHundredthsOfAccumulatedStep) {
  beginPinch();
  // Every one of these frames asks for more than the largest step, a tenth.
  double distance = 25;
  std::vector<int> perFrame;
  for (int i = 0; i < 5; ++i) {
    distance *= 1.5;
    process(pair(distance));
    perFrame.push_back(presses(kIn));
  }
  EXPECT_EQ(perFrame, (std::vector{0, 1, 1, 1, 1})) << "never more than one at a time";
}

TEST_F(KeystrokeZoom, OutwardAndInwardCancelOut) {
  beginPinch();
  process(pair(50));
  EXPECT_EQ(presses(kIn), 0) << "a tenth is not enough";
  for (int i = 0; i < 3; ++i) process(pair(50 - 16 * (i + 1)));
  EXPECT_EQ(presses(kOut), 1) << "0.1 - 0.1 · 3 is two tenths the other way";
}

TEST_F(KeystrokeZoom, TheRemainderDoesNotOutliveTheGesture) {
  beginPinch();
  process(pair(50));
  lift();
  beginPinch();
  process(pair(50));
  EXPECT_EQ(presses(kIn), 0);
}

TEST_F(KeystrokeZoom, UsesTheKeysOfTheLayout) {
  keyboardLayout.select({{{50, "+"}}});
  keyCodes.start();
  beginPinch();
  for (const double distance : {40.0, 60.0, 90.0}) process(pair(distance));
  EXPECT_EQ(posted.take().front(), "key 50 down flags=1048576");
}

TEST_F(KeystrokeZoom, IsDecidedWhenThePinchBegins) {
  context.usesKeystrokeZoom = false;
  process(pair(20));
  context.usesKeystrokeZoom = true;
  process(pair(25));
  context.usesKeystrokeZoom = false;
  for (const double distance : {40.0, 60.0, 90.0}) process(pair(distance));
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_FALSE(posted.take().empty());
}

TEST_F(KeystrokeZoom, ACancelPostsNothingEither) {
  beginPinch();
  process(three());
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_EQ(said.take().back(), "pinch cancelled");
}

TEST_F(KeystrokeZoom, RotationsAreStillEvents) {
  beginRotation();
  lift();
  EXPECT_EQ(gestures(), (Lines{"rotate 1 0.000", "rotate 4 0.000"}));
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
