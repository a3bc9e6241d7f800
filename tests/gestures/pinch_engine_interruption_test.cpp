#include <gtest/gtest.h>

#include "pinch_engine_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

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
  process(pair(36));
  EXPECT_EQ(gestures(), Lines{}) << "blocked until the fingers lift";
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

}  // namespace
}  // namespace velotap
