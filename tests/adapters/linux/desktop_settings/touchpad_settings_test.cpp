#include "adapters/linux/desktop_settings/touchpad_settings.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TouchpadSettings tapping() {
  TouchpadSettings touchpad;
  touchpad.tapToClick = true;
  return touchpad;
}

DeviceTouchpadSettings device(std::uint32_t vendor, std::uint32_t product,
                              TouchpadSettings settings) {
  return {.vendor = vendor, .product = product, .name = "pad", .settings = settings};
}

TEST(TouchpadSettings, aMagicTrackpadsDefaultsAnswerClicksButNoTaps) {
  EXPECT_EQ(desktopAnswers({}), (ThreeFingerAnswers{.tap = false, .click = true}));
}

TEST(TouchpadSettings, tapToClickAnswersTaps) {
  EXPECT_EQ(desktopAnswers(tapping()), (ThreeFingerAnswers{.tap = true, .click = true}));
}

TEST(TouchpadSettings, onlyTheFingersMethodAnswersClicks) {
  TouchpadSettings touchpad;
  touchpad.clickMethod = TouchpadClickMethod::buttonAreas;
  EXPECT_FALSE(desktopAnswers(touchpad).click);
  touchpad.clickMethod = TouchpadClickMethod::none;
  EXPECT_FALSE(desktopAnswers(touchpad).click);
}

TEST(TouchpadSettings, aTouchpadThatIsOffAnswersNothing) {
  TouchpadSettings touchpad = tapping();
  touchpad.enabled = false;
  EXPECT_EQ(desktopAnswers(touchpad), ThreeFingerAnswers{});
}

TEST(DesktopTouchpads, aTouchpadWithoutSettingsOfItsOwnHasThoseOfTheOthers) {
  const DesktopTouchpads touchpads{.others = tapping(), .devices = {device(0x5ac, 0x265, {})}};
  EXPECT_FALSE(touchpads.of(0x5ac, 0x265).tapToClick);
  EXPECT_TRUE(touchpads.of(0x5ac, 0x324).tapToClick);
  EXPECT_TRUE(touchpads.of(0x6cb, 0x265).tapToClick);
  EXPECT_FALSE(touchpads.named("pad").tapToClick);
  EXPECT_TRUE(touchpads.named("other").tapToClick);
}

TEST(DesktopTouchpads, theTrackpadsAnswerWhenOneOfThemIsAnswered) {
  EXPECT_TRUE(
      desktopAnswersOnTrackpads(
          {.others = {}, .devices = {device(0x5ac, 0x265, {}), device(0x4c, 0x324, tapping())}})
          .tap);
  EXPECT_FALSE(
      desktopAnswersOnTrackpads({.others = tapping(), .devices = {device(0x4c, 0x265, {})}}).tap);
}

TEST(DesktopTouchpads, otherDevicesDoNotSpeakForTheTrackpads) {
  const DesktopTouchpads laptop{.others = {}, .devices = {device(0x6cb, 0xcd8b, tapping())}};
  EXPECT_FALSE(desktopAnswersOnTrackpads(laptop).tap);
  const DesktopTouchpads mouse{.others = {}, .devices = {device(0x5ac, 0x269, tapping())}};
  EXPECT_FALSE(desktopAnswersOnTrackpads(mouse).tap);
}

TEST(DesktopTouchpads, withoutOneOfTheirOwnTheOthersSettingsHold) {
  EXPECT_TRUE(desktopAnswersOnTrackpads({.others = tapping(), .devices = {}}).tap);
}

TEST(SystemGesturePreference, aTapIsASystemGestureWhereTheDesktopAnswersIt) {
  for (const char* domain : {"com.apple.AppleMultitouchTrackpad",
                             "com.apple.driver.AppleBluetoothMultitouch.trackpad"}) {
    EXPECT_EQ(systemGesturePreference(domain, "TrackpadThreeFingerTapGesture", {.tap = true}),
              Value(1));
    EXPECT_EQ(systemGesturePreference(domain, "TrackpadThreeFingerTapGesture",
                                      {.tap = false, .click = true}),
              Value(0));
    EXPECT_EQ(systemGesturePreference(domain, "TrackpadThreeFingerDrag", {.tap = true}), Value(0));
  }
}

TEST(SystemGesturePreference, noDesktopSwipesWithTwoFingersOnAMouse) {
  for (const char* domain :
       {"com.apple.AppleMultitouchMouse", "com.apple.driver.AppleBluetoothMultitouch.mouse"}) {
    EXPECT_EQ(systemGesturePreference(domain, "MouseTwoFingerHorizSwipeGesture", {.tap = true}),
              Value(0));
  }
}

TEST(SystemGesturePreference, otherKeysAndDomainsAreUnknown) {
  EXPECT_FALSE(systemGesturePreference("com.apple.AppleMultitouchMouse",
                                       "TrackpadThreeFingerTapGesture", {.tap = true}));
  EXPECT_FALSE(systemGesturePreference("com.apple.AppleMultitouchTrackpad",
                                       "MouseTwoFingerHorizSwipeGesture", {.tap = true}));
  EXPECT_FALSE(systemGesturePreference("com.apple.AppleMultitouchTrackpad", "Clicking", {}));
  EXPECT_FALSE(systemGesturePreference("", "", {}));
}

}  // namespace
}  // namespace velotap
