#include "config/conflict_checker.hpp"

#include <gtest/gtest.h>

#include <ostream>

#include "support/desktop.hpp"

namespace velotap {
namespace {

constexpr const char* kPad = "com.apple.AppleMultitouchTrackpad";
constexpr const char* kWirelessPad = "com.apple.driver.AppleBluetoothMultitouch.trackpad";
constexpr const char* kMouse = "com.apple.AppleMultitouchMouse";
constexpr const char* kWirelessMouse = "com.apple.driver.AppleBluetoothMultitouch.mouse";
constexpr const char* kThreeFingerTap = "TrackpadThreeFingerTapGesture";
constexpr const char* kTwoFingerSwipe = "MouseTwoFingerHorizSwipeGesture";

class ConflictCheckerTest : public ::testing::Test, protected test::Desktop {
 protected:
  void enable(const char* gesture) {
    checker_.checkAfterEnabling(gesture);
    mainQueue.runDue();
  }
  bool isOn(const char* key, std::span<const std::string_view> domains) {
    return ConflictChecker::isEnabled(systemPreferences, key, domains);
  }

  DefaultsStore defaults_{preferences, log};
  ConflictChecker checker_{systemPreferences, defaults_, mainQueue, alerts,
                           [](std::string_view key) { return "«" + std::string(key) + "»"; }};
};

TEST_F(ConflictCheckerTest, AnIntegerOtherThanZeroAndTrueAreOn) {
  struct Case {
    Value value;
    bool expected;
  };
  const Case cases[] = {
      {0, false},         {1, true},    {2, true},    {-1, true},      {true, true},
      {false, false},     {1.0, false}, {"1", false}, {"true", false}, {ValueArray{1}, false},
      {ValueMap(), false}};
  for (const Case& c : cases) {
    systemPreferences.set(kPad, "Key", c.value);
    EXPECT_EQ(isOn("Key", kTrackpadDomains), c.expected);
  }
}

TEST_F(ConflictCheckerTest, EveryDomainIsSearched) {
  EXPECT_FALSE(isOn("Key", kTrackpadDomains));
  systemPreferences.set(kPad, "Key", 0);
  systemPreferences.set(kWirelessPad, "Key", 1);
  EXPECT_TRUE(isOn("Key", kTrackpadDomains));
  EXPECT_FALSE(isOn("Key", kMouseDomains));
  systemPreferences.set(kPad, "Key", "text");
  EXPECT_TRUE(isOn("Key", kTrackpadDomains));
  systemPreferences.set(kWirelessMouse, "Key", 1);
  EXPECT_TRUE(isOn("Key", kMouseDomains));
  EXPECT_FALSE(isOn("key", kMouseDomains)) << "keys are compared exactly";
  EXPECT_FALSE(isOn("Key", {}));
}

struct RuleCase {
  const char* gesture;
  const char* domain;  ///< null: no system setting is needed
  const char* systemKey;
  const char* text;
  const char* pane;
};

std::ostream& operator<<(std::ostream& out, const RuleCase& c) {
  return out << c.gesture << " of " << (c.domain != nullptr ? c.domain : "any setting");
}

class ConflictRule : public ConflictCheckerTest, public ::testing::WithParamInterface<RuleCase> {};

TEST_P(ConflictRule, Warning) {
  const RuleCase& c = GetParam();
  if (c.domain != nullptr) {
    EXPECT_FALSE(checker_.warning(c.gesture));
    systemPreferences.set(c.domain, c.systemKey, 0);
    EXPECT_FALSE(checker_.warning(c.gesture));
    systemPreferences.set(c.domain, c.systemKey, 2);
  }
  const auto warning = checker_.warning(c.gesture);
  ASSERT_TRUE(warning);
  EXPECT_EQ(warning->text, c.text);
  EXPECT_EQ(warning->settingsPane, c.pane);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ConflictRule,
    ::testing::Values(
        RuleCase{"padTap3", kPad, kThreeFingerTap, "«conflict.trackpad-three-finger-tap»",
                 "com.apple.preference.trackpad"},
        RuleCase{"padTap3", kWirelessPad, kThreeFingerTap, "«conflict.trackpad-three-finger-tap»",
                 "com.apple.preference.trackpad"},
        RuleCase{"mousePinchZoom", kMouse, kTwoFingerSwipe, "«conflict.mouse-two-finger-swipe»",
                 "com.apple.preference.mouse"},
        RuleCase{"mousePinchZoom", kWirelessMouse, kTwoFingerSwipe,
                 "«conflict.mouse-two-finger-swipe»", "com.apple.preference.mouse"},
        RuleCase{"mouseClick2", kMouse, kTwoFingerSwipe, "«conflict.mouse-two-finger-swipe»",
                 "com.apple.preference.mouse"},
        RuleCase{"mouseSwipe3Nav", nullptr, nullptr, "«conflict.mouse-three-finger-swipe»",
                 "com.apple.preference.mouse"}));

TEST_F(ConflictCheckerTest, OtherGesturesNeverWarn) {
  for (const char* domain : {kPad, kWirelessPad, kMouse, kWirelessMouse}) {
    systemPreferences.set(domain, kThreeFingerTap, 1);
    systemPreferences.set(domain, kTwoFingerSwipe, 1);
  }
  for (const char* gesture : {"padTap4", "padClick3", "mouseTap3", "mouseClick3",
                              "mouseClick1Center", "mouseRotate", "", "padtap3", "nonsense"}) {
    EXPECT_FALSE(checker_.warning(gesture)) << gesture;
    enable(gesture);
  }
  EXPECT_TRUE(alerts.shown().empty());
}

TEST_F(ConflictCheckerTest, ShowsOneAlertOnTheMainQueue) {
  systemPreferences.set(kPad, kThreeFingerTap, 1);
  checker_.checkAfterEnabling("padTap3");
  EXPECT_TRUE(alerts.shown().empty());
  EXPECT_TRUE(defaults_.boolean("conflictWarned.padTap3")) << "set before the alert is seen";
  mainQueue.runDue();
  ASSERT_EQ(alerts.shown().size(), 1U);
  EXPECT_EQ(alerts.shown()[0].message, "«Heads-up: possible gesture overlap»");
  EXPECT_EQ(alerts.shown()[0].informativeText, "«conflict.trackpad-three-finger-tap»");
  EXPECT_EQ(alerts.shown()[0].buttons,
            (std::vector<std::string>{"«OK»", "«Open System Settings»"}));
  EXPECT_TRUE(alerts.openedUrls().empty());
}

TEST_F(ConflictCheckerTest, TheSecondButtonOpensTheSettings) {
  alerts.setAnswer(1);
  systemPreferences.set(kPad, kThreeFingerTap, 1);
  enable("padTap3");
  enable("mouseSwipe3Nav");
  EXPECT_EQ(alerts.openedUrls(),
            (std::vector<std::string>{"x-apple.systempreferences:com.apple.preference.trackpad",
                                      "x-apple.systempreferences:com.apple.preference.mouse"}));
}

TEST_F(ConflictCheckerTest, WithoutAnOverlapNothingIsShownAndNothingRemembered) {
  enable("padTap3");
  systemPreferences.set(kPad, kThreeFingerTap, 0);
  enable("padTap3");
  EXPECT_TRUE(alerts.shown().empty());
  EXPECT_FALSE(defaults_.boolean("conflictWarned.padTap3"));
  systemPreferences.set(kPad, kThreeFingerTap, 1);
  enable("padTap3");
  EXPECT_EQ(alerts.shown().size(), 1U) << "a later overlap does warn";
}

TEST_F(ConflictCheckerTest, EachGestureWarnsOnce) {
  for (int i = 0; i < 3; ++i) enable("mouseSwipe3Nav");
  EXPECT_EQ(alerts.shown().size(), 1U);
  EXPECT_TRUE(defaults_.boolean("conflictWarned.mouseSwipe3Nav"));
}

TEST_F(ConflictCheckerTest, OnceEvenBeforeTheAlertWasSeen) {
  checker_.checkAfterEnabling("mouseSwipe3Nav");
  checker_.checkAfterEnabling("mouseSwipe3Nav");
  mainQueue.runDue();
  EXPECT_EQ(alerts.shown().size(), 1U);
}

TEST_F(ConflictCheckerTest, TwoGesturesOfOneOverlapWarnTwiceWithTheSameText) {
  systemPreferences.set(kWirelessMouse, kTwoFingerSwipe, 1);
  enable("mouseClick2");
  enable("mousePinchZoom");
  ASSERT_EQ(alerts.shown().size(), 2U);
  EXPECT_EQ(alerts.shown()[0].informativeText, alerts.shown()[1].informativeText);
}

TEST_F(ConflictCheckerTest, AnEarlierLaunchMayHaveWarned) {
  defaults_.set("conflictWarned.mouseSwipe3Nav", true);
  enable("mouseSwipe3Nav");
  EXPECT_TRUE(alerts.shown().empty());
}

}  // namespace
}  // namespace velotap
