#include <gtest/gtest.h>

#include <cmath>

#include "engine_fixture.hpp"
#include "gestures/touch_engine.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

class ClickConversion : public EngineTest {
 protected:
  bool converts(Button button = Button::left) { return engine.shouldConvertClick(button); }
  void onlyOn(const std::string& key) {
    for (const char* trigger : {"mouseClick3", "mouseClick2", "mouseClick1Center", "padClick3"}) {
      set(trigger, key == trigger);
    }
  }
};

struct ConversionCase {
  const char* name;
  bool onMouse;
  int fingers;
  const char* onlyOn;
  bool converts;
};

class ClickTriggerOf : public ClickConversion,
                       public ::testing::WithParamInterface<ConversionCase> {};

TEST_P(ClickTriggerOf, Click) {
  const ConversionCase& c = GetParam();
  onlyOn(c.onlyOn);
  for (const Button button : {Button::left, Button::right}) {
    Frame contacts = row(c.fingers);
    if (c.fingers == 1) contacts[0] = touch({.id = 1, .x = 0.5F});
    frame(c.onMouse ? mouse : pad, contacts);
    EXPECT_EQ(converts(button), c.converts);
    EXPECT_EQ(engine.isConverting(button), c.converts);
    EXPECT_EQ(engine.endConversion(button), c.converts);
    lift(c.onMouse ? mouse : pad);
  }
}

const ConversionCase kConversionCases[] = {
    {"padThree", false, 3, "padClick3", true},
    {"padThreeWithoutPad", false, 3, "mouseClick3", false},
    {"padTwo", false, 2, "mouseClick2", false},
    {"padTwoWithPad", false, 2, "padClick3", false},
    {"padFour", false, 4, "padClick3", false},
    {"padOne", false, 1, "mouseClick1Center", false},
    {"mouseThree", true, 3, "mouseClick3", true},
    {"mouseThreeWithTwo", true, 3, "mouseClick2", false},
    {"mouseThreeWithPad", true, 3, "padClick3", false},
    {"mouseTwo", true, 2, "mouseClick2", true},
    {"mouseTwoWithThree", true, 2, "mouseClick3", false},
    {"mouseOne", true, 1, "mouseClick1Center", true},
    {"mouseOneWithTwo", true, 1, "mouseClick2", false},
    {"mouseFour", true, 4, "mouseClick3", false},
};

INSTANTIATE_TEST_SUITE_P(Cases, ClickTriggerOf, ::testing::ValuesIn(kConversionCases),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(ClickConversion, AClickThatTheDesktopAnswersIsLeftAlone) {
  systemPreferences.setDesktopClicksFor(TrackpadGesture::threeFingerTap, true);
  frame(pad, row(3));
  EXPECT_TRUE(converts()) << "answered are taps, not clicks";
  EXPECT_TRUE(engine.endConversion(Button::left));
  systemPreferences.setDesktopClicksFor(TrackpadGesture::threeFingerClick, true);
  EXPECT_FALSE(converts());
  set("padThreeFingerMode", "post");
  EXPECT_TRUE(converts());
  EXPECT_TRUE(engine.endConversion(Button::left));
  systemPreferences.setDesktopClicksFor(TrackpadGesture::threeFingerClick, false);
  set("padThreeFingerMode", "native");
  EXPECT_FALSE(converts());
  lift(pad);
  frame(mouse, row(3));
  EXPECT_TRUE(converts()) << "no desktop knows of fingers on a mouse";
}

TEST_F(ClickConversion, WithoutFingersAClickIsAClick) {
  EXPECT_FALSE(converts());
}

TEST_F(ClickConversion, TheCentreBandIsClosed) {
  onlyOn("mouseClick1Center");
  set("centerMinX", 0.25);
  set("centerMaxX", 0.75);
  struct Case {
    float x;
    bool expected;
  };
  const Case cases[] = {{0.25F, true},
                        {std::nextafter(0.25F, 0.0F), false},
                        {std::nextafter(0.25F, 1.0F), true},
                        {0.5F, true},
                        {0.75F, true},
                        {std::nextafter(0.75F, 0.0F), true},
                        {std::nextafter(0.75F, 1.0F), false},
                        {0, false},
                        {1, false}};
  for (const Case& c : cases) {
    frame(mouse, {touch({.id = 1, .x = c.x})});
    EXPECT_EQ(converts(), c.expected) << c.x;
    engine.endConversion(Button::left);
  }
}

TEST_F(ClickConversion, ABandWithoutWidthIsOnePlace) {
  onlyOn("mouseClick1Center");
  set("centerMinX", 0.5);
  set("centerMaxX", 0.5);
  frame(mouse, {touch({.id = 1, .x = 0.5F})});
  EXPECT_TRUE(converts());
  engine.endConversion(Button::left);
  frame(mouse, {touch({.id = 1, .x = 0.51F})});
  EXPECT_FALSE(converts());
}

TEST_F(ClickConversion, TheFactoryBandIsTheMiddleThird) {
  onlyOn("mouseClick1Center");
  for (const auto& [x, expected] :
       {std::pair{0.35F, true}, {0.65F, true}, {0.34F, false}, {0.66F, false}}) {
    frame(mouse, {touch({.id = 1, .x = x})});
    EXPECT_EQ(converts(), expected) << x;
    engine.endConversion(Button::left);
  }
}

TEST_F(ClickConversion, TheLatestPlaceOfTheOnlyFingerCounts) {
  onlyOn("mouseClick1Center");
  frame(mouse, {touch({.id = 1, .x = 0.1F})});
  frame(mouse, {touch({.id = 1, .x = 0.5F}), touch({.id = 2, .x = 0.9F})});
  EXPECT_FALSE(converts());
  frame(mouse, {touch({.id = 2, .x = 0.5F})});
  EXPECT_TRUE(converts());
}

TEST_F(ClickConversion, NothingConvertsWhileSwitchedOff) {
  frame(pad, row(3));
  set("enabled", false);
  EXPECT_FALSE(converts());
  set("enabled", true);
  EXPECT_TRUE(converts()) << "no frame came in between";
}

TEST_F(ClickConversion, NothingConvertsWhereGesturesDoNotAct) {
  frame(pad, row(3));
  config.setIgnoredApps({kEditor});
  EXPECT_FALSE(converts());
  config.setIgnoredApps({});
  EXPECT_TRUE(converts());
}

TEST_F(ClickConversion, TheSessionMustBelongToTheApplicationInFront) {
  frame(pad, row(3));
  activate(kBrowser);
  EXPECT_FALSE(converts());
}

TEST_F(ClickConversion, TheApplicationMustStillBeInFront) {
  frame(pad, row(3));
  workspace.setLive(AppId::intern(kBrowser));
  EXPECT_FALSE(converts());
  EXPECT_FALSE(engine.isConverting(Button::left));
  workspace.setLive(AppId::intern(kEditor));
  EXPECT_TRUE(converts());
}

TEST_F(ClickConversion, FingersWithoutASessionDoNotConvert) {
  start();
  frame(pad, row(3));
  EXPECT_FALSE(converts());
}

TEST_F(ClickConversion, WithFingersOnTwoDevicesNothingConverts) {
  frame(pad, row(3));
  frame(mouse, row(1, 0.6F));
  EXPECT_FALSE(converts()) << "one of them does not qualify";
  frame(mouse, row(3));
  EXPECT_FALSE(converts()) << "both qualify";
  lift(mouse);
  EXPECT_TRUE(converts());
}

TEST_F(ClickConversion, ADeviceThatIsNotReadyStillCountsAsTouching) {
  start();
  frame(mouse, row(1));
  lift(pad);
  frame(pad, row(3));
  EXPECT_FALSE(converts());
}

TEST_F(ClickConversion, OnlyOneAtATime) {
  frame(pad, row(3));
  EXPECT_TRUE(converts(Button::left));
  EXPECT_FALSE(converts(Button::right));
  EXPECT_FALSE(converts(Button::left));
  EXPECT_TRUE(engine.isConverting(Button::left));
  EXPECT_FALSE(engine.isConverting(Button::right));
}

TEST_F(ClickConversion, OnlyTheHeldButtonEndsIt) {
  frame(pad, row(3));
  EXPECT_TRUE(converts(Button::left));
  EXPECT_FALSE(engine.endConversion(Button::right));
  EXPECT_TRUE(engine.isConverting(Button::left));
  EXPECT_TRUE(engine.endConversion(Button::left));
  EXPECT_FALSE(engine.endConversion(Button::left));
  EXPECT_TRUE(converts(Button::right));
}

TEST_F(ClickConversion, ItOutlivesTheFingers) {
  frame(pad, row(3));
  EXPECT_TRUE(converts());
  lift(pad);
  EXPECT_TRUE(engine.isConverting(Button::left));
}

TEST_F(ClickConversion, ItConsumesTheSession) {
  frame(pad, row(3));
  EXPECT_TRUE(converts());
  EXPECT_TRUE(engine.endConversion(Button::left));
  time.advance(0.1);
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(ClickConversion, ARefusedOneConsumesNothing) {
  set("padClick3", false);
  frame(pad, row(3));
  EXPECT_FALSE(converts());
  lift(pad);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(ClickConversion, APinchIsNoTwoFingerClick) {
  onlyOn("mouseClick2");
  const auto apart = [](float half) {
    return Frame{touch({.id = 1, .x = 0.5F - half}), touch({.id = 2, .x = 0.5F + half})};
  };
  frame(mouse, apart(0.1F));
  EXPECT_TRUE(converts()) << "two fingers that rest";
  engine.endConversion(Button::left);
  lift(mouse);
  frame(mouse, apart(0.1F));
  frame(mouse, apart(0.15F));
  ASSERT_TRUE(pinch.isPinching());
  EXPECT_FALSE(converts());
}

TEST_F(ClickConversion, OverThePracticeTargetClicksConvertToo) {
  activate(kOwnApp);
  practice.set(Rect{500, 300, 100, 100});
  frame(pad, row(3));
  EXPECT_TRUE(converts());
  engine.endConversion(Button::left);
  events.setPointer(Point{0, 0});
  EXPECT_FALSE(converts());
}

TEST_F(ClickConversion, AbandoningTellsWhetherAButtonWasHeld) {
  EXPECT_FALSE(engine.abandonConversion());
  frame(pad, row(3));
  EXPECT_TRUE(converts());
  EXPECT_TRUE(engine.abandonConversion());
  EXPECT_FALSE(engine.isConverting(Button::left));
  EXPECT_FALSE(engine.abandonConversion());
  EXPECT_EQ(posted.take(), Lines{}) << "the release is the caller's";
}

// Swallowing.

class Swallowing : public EngineTest {
 protected:
  Swallowing() {
    systemPreferences.set("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerDrag", 1);
    tap(pad, 3);
    posted.take();
    said.take();
  }
  bool swallows(bool canIdentify = true, bool observed = false) {
    return engine.shouldSwallowSyntheticLeftClick(canIdentify, observed);
  }
};

TEST_F(Swallowing, NeedsToTellSyntheticPressesFromRealOnes) {
  EXPECT_FALSE(swallows(false, false));
  EXPECT_FALSE(swallows(false, true));
  EXPECT_FALSE(swallows(true, true));
  EXPECT_TRUE(swallows(true, false)) << "none of those closed the window";
}

TEST_F(Swallowing, WaitsForFingersOnTrackpadsToLift) {
  frame(pad, row(2));
  EXPECT_FALSE(swallows());
  EXPECT_EQ(said.take(),
            Lines{"suppression window active but trackpad has 2 finger(s) — not swallowing"});
  lift(pad);
  said.take();
  EXPECT_TRUE(swallows()) << "the window stayed open";
  EXPECT_EQ(said.take(), Lines{});
}

TEST_F(Swallowing, FingersOnMiceDoNotMatter) {
  frame(mouse, row(3));
  EXPECT_TRUE(swallows());
}

TEST_F(Swallowing, FingersOfAllTrackpadsAreCounted) {
  const char* second = "second";
  multitouch.add({.name = second, .family = 129});
  start();
  lift(pad);
  tap(pad, 3, 0.25);
  posted.take();
  frame(pad, row(1));
  frame(second, row(4));
  said.take();
  EXPECT_FALSE(swallows());
  EXPECT_EQ(said.take(),
            Lines{"suppression window active but trackpad has 5 finger(s) — not swallowing"});
}

TEST_F(Swallowing, OutsideTheWindowNothingIsSaid) {
  time.advance(0.5);
  frame(pad, row(2));
  EXPECT_FALSE(swallows());
  EXPECT_EQ(said.take(), Lines{});
}

TEST_F(Swallowing, AbandoningTheConversionClosesTheWindow) {
  EXPECT_FALSE(engine.abandonConversion());
  EXPECT_FALSE(swallows());
}

}  // namespace
}  // namespace velotap
