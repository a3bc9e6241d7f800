#include <gtest/gtest.h>

#include "engine_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

class TouchEnginePinch : public EngineTest {
 protected:
  // Two fingers `apart` hundredths of the surface (millimetres, here) from each other.
  static Frame pair(float apart) {
    return {touch({.id = 1, .x = 0.5F - apart / 200}), touch({.id = 2, .x = 0.5F + apart / 200})};
  }
  void beginPinch(const char* device) {
    frame(device, pair(20));
    frame(device, pair(26));
  }
  Lines phases() {
    Lines result;
    for (const GestureEvent& event : posted.takeGestures()) {
      const std::string kind = event.kind == GestureKind::magnify ? "magnify " : "rotate ";
      result.push_back(kind + std::to_string(static_cast<int>(event.phase)));
    }
    return result;
  }
};

TEST_F(TouchEnginePinch, TwoFingersOnAMouseZoom) {
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 1"});
  EXPECT_TRUE(pinch.isPinching());
  frame(mouse, pair(28));
  EXPECT_EQ(phases(), Lines{"magnify 2"});
  lift(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 4"});
  EXPECT_FALSE(pinch.isPinching());
}

TEST_F(TouchEnginePinch, TwoFingersOnATrackpadDoNot) {
  beginPinch(pad);
  lift(pad);
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, WithBothSettingsOffThereIsNoPinch) {
  set("mousePinchZoom", false);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, TurningBothSettingsOffCancels) {
  beginPinch(mouse);
  set("mousePinchZoom", false);
  frame(mouse, pair(28));
  EXPECT_EQ(phases(), (Lines{"magnify 1", "magnify 8"}));
  set("mousePinchZoom", true);
  frame(mouse, pair(34));
  frame(mouse, pair(40));
  EXPECT_EQ(phases(), Lines{}) << "blocked until the fingers lift";
  lift(mouse);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 1"});
}

TEST_F(TouchEnginePinch, WithOneSettingOnTheOtherGestureIsRefused) {
  set("mousePinchZoom", false);
  set("mouseRotate", true);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
  lift(mouse);
  frame(mouse, {touch({.id = 1, .x = 0.4F}), touch({.id = 2, .x = 0.6F})});
  frame(mouse, {touch({.id = 1, .x = 0.4F, .y = 0.47F}), touch({.id = 2, .x = 0.6F, .y = 0.53F})});
  EXPECT_EQ(phases(), Lines{"rotate 1"});
}

TEST_F(TouchEnginePinch, AConvertedClickCancels) {
  set("mouseClick2", true);
  frame(mouse, pair(20));
  ASSERT_TRUE(engine.shouldConvertClick(Button::left));
  frame(mouse, pair(26));
  EXPECT_EQ(phases(), Lines{}) << "the hand drags, it does not zoom";
  EXPECT_TRUE(engine.endConversion(Button::left));
  frame(mouse, pair(32));
  frame(mouse, pair(40));
  EXPECT_EQ(phases(), Lines{}) << "blocked until the fingers lift";
  lift(mouse);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 1"});
}

TEST_F(TouchEnginePinch, AConversionHeldOnAnotherDeviceKeepsAMouseFromPinching) {
  frame(pad, row(3));
  ASSERT_TRUE(engine.shouldConvertClick(Button::left));
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, OverThePracticeTargetThereIsNoPinch) {
  activate(kOwnApp);
  practice.set(Rect{0, 0, 2000, 2000});
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, FingersThatWereDownAtTheStartDoNotPinch) {
  start();
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
  lift(mouse);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 1"});
}

TEST_F(TouchEnginePinch, SwitchingApplicationsCancelsWithoutAnEventForTheNewOne) {
  beginPinch(mouse);
  phases();
  said.take();
  activate(kBrowser);
  frame(mouse, pair(28));
  EXPECT_EQ(phases(), Lines{}) << "the new application never saw the beginning";
  EXPECT_EQ(said.take(), Lines{"pinch cancelled"});
  EXPECT_FALSE(pinch.isPinching());
  frame(mouse, pair(34));
  frame(mouse, pair(40));
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, LosingTheTargetAtTheLiftCancels) {
  beginPinch(mouse);
  phases();
  config.setKeystrokeZoomApps({});
  set("enabled", false);
  lift(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 8"}) << "the editor is still in front and saw the beginning";
}

TEST_F(TouchEnginePinch, StoppingCancels) {
  beginPinch(mouse);
  engine.stop();
  EXPECT_EQ(phases(), (Lines{"magnify 1", "magnify 8"}));
  EXPECT_FALSE(pinch.isPinching());
}

TEST_F(TouchEnginePinch, KeystrokeApplicationsGetKeystrokes) {
  config.setKeystrokeZoomApps({kEditor});
  beginPinch(mouse);
  for (float apart = 28; apart < 60; apart += 2) frame(mouse, pair(apart));
  lift(mouse);
  EXPECT_EQ(phases(), Lines{});
  const Lines keys = posted.take();
  ASSERT_GE(keys.size(), 4U);
  for (std::size_t i = 0; i < keys.size(); i += 2) {
    EXPECT_EQ(keys[i], "key 24 down flags=1048576");
    EXPECT_EQ(keys[i + 1], "key 24 up flags=1048576");
  }
}

TEST_F(TouchEnginePinch, APinchIsNoTapEither) {
  set("mouseTap3", true);
  frame(mouse, pair(20));
  frame(mouse, pair(26));
  lift(mouse);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
}

}  // namespace
}  // namespace velotap
