#include "config/conflict_checker.hpp"

#include <gtest/gtest.h>

#include "support/fake_ports.hpp"
#include "support/virtual_time.hpp"

namespace velotap {
namespace {

constexpr const char* kPad = "com.apple.AppleMultitouchTrackpad";
constexpr const char* kWirelessPad = "com.apple.driver.AppleBluetoothMultitouch.trackpad";
constexpr const char* kMouse = "com.apple.AppleMultitouchMouse";
constexpr const char* kWirelessMouse = "com.apple.driver.AppleBluetoothMultitouch.mouse";
constexpr const char* kThreeFingerTap = "TrackpadThreeFingerTapGesture";
constexpr const char* kTwoFingerSwipe = "MouseTwoFingerHorizSwipeGesture";

class ConflictCheckerTest : public ::testing::Test {
 protected:
  void enable(const char* gesture) {
    checker_.checkAfterEnabling(gesture);
    queue_.runDue();
  }
  bool isOn(const char* key, std::span<const std::string_view> domains) {
    return ConflictChecker::isEnabled(system_, key, domains);
  }

  test::ManualClock clock_;
  test::VirtualQueue queue_{clock_};
  test::FakeSystemPreferences system_;
  test::MemoryPreferences storage_;
  test::RecordingLog log_;
  test::FakeAlerts alerts_;
  DefaultsStore defaults_{storage_, log_};
  ConflictChecker checker_{system_, defaults_, queue_, alerts_,
                           [](std::string_view key) { return "«" + std::string(key) + "»"; }};
};

TEST_F(ConflictCheckerTest, AnIntegerOtherThanZeroIsOn) {
  struct Case {
    Value value;
    bool expected;
  };
  const Case cases[] = {{0, false},
                        {1, true},
                        {2, true},
                        {-1, true},
                        {"1", false},
                        {"true", false},
                        {ValueArray{1}, false},
                        {ValueMap(), false}};
  for (const Case& c : cases) {
    system_.set(kPad, "Key", c.value);
    EXPECT_EQ(isOn("Key", kTrackpadDomains), c.expected);
  }
}

TEST_F(ConflictCheckerTest, EveryDomainIsSearched) {
  EXPECT_FALSE(isOn("Key", kTrackpadDomains));
  system_.set(kPad, "Key", 0);
  system_.set(kWirelessPad, "Key", 1);
  EXPECT_TRUE(isOn("Key", kTrackpadDomains));
  EXPECT_FALSE(isOn("Key", kMouseDomains));
  system_.set(kPad, "Key", "text");
  EXPECT_TRUE(isOn("Key", kTrackpadDomains));
  system_.set(kWirelessMouse, "Key", 1);
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

class ConflictRule : public ConflictCheckerTest, public ::testing::WithParamInterface<RuleCase> {};

TEST_P(ConflictRule, Warning) {
  const RuleCase& c = GetParam();
  if (c.domain != nullptr) {
    EXPECT_FALSE(checker_.warning(c.gesture));
    system_.set(c.domain, c.systemKey, 0);
    EXPECT_FALSE(checker_.warning(c.gesture));
    system_.set(c.domain, c.systemKey, 2);
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
    system_.set(domain, kThreeFingerTap, 1);
    system_.set(domain, kTwoFingerSwipe, 1);
  }
  for (const char* gesture : {"padTap4", "padClick3", "mouseTap3", "mouseClick3",
                              "mouseClick1Center", "mouseRotate", "", "padtap3", "nonsense"}) {
    EXPECT_FALSE(checker_.warning(gesture)) << gesture;
    enable(gesture);
  }
  EXPECT_TRUE(alerts_.shown.empty());
}

TEST_F(ConflictCheckerTest, ShowsOneAlertOnTheMainQueue) {
  system_.set(kPad, kThreeFingerTap, 1);
  checker_.checkAfterEnabling("padTap3");
  EXPECT_TRUE(alerts_.shown.empty());
  EXPECT_TRUE(defaults_.boolean("conflictWarned.padTap3")) << "set before the alert is seen";
  queue_.runDue();
  ASSERT_EQ(alerts_.shown.size(), 1U);
  EXPECT_EQ(alerts_.shown[0].message, "«Heads-up: possible gesture overlap»");
  EXPECT_EQ(alerts_.shown[0].informativeText, "«conflict.trackpad-three-finger-tap»");
  EXPECT_EQ(alerts_.shown[0].buttons, (std::vector<std::string>{"«OK»", "«Open System Settings»"}));
  EXPECT_TRUE(alerts_.opened.empty());
}

TEST_F(ConflictCheckerTest, TheSecondButtonOpensTheSettings) {
  alerts_.answer = 1;
  system_.set(kPad, kThreeFingerTap, 1);
  enable("padTap3");
  enable("mouseSwipe3Nav");
  EXPECT_EQ(alerts_.opened,
            (std::vector<std::string>{"x-apple.systempreferences:com.apple.preference.trackpad",
                                      "x-apple.systempreferences:com.apple.preference.mouse"}));
}

TEST_F(ConflictCheckerTest, WithoutAnOverlapNothingIsShownAndNothingRemembered) {
  enable("padTap3");
  system_.set(kPad, kThreeFingerTap, 0);
  enable("padTap3");
  EXPECT_TRUE(alerts_.shown.empty());
  EXPECT_FALSE(defaults_.boolean("conflictWarned.padTap3"));
  system_.set(kPad, kThreeFingerTap, 1);
  enable("padTap3");
  EXPECT_EQ(alerts_.shown.size(), 1U) << "a later overlap does warn";
}

TEST_F(ConflictCheckerTest, EachGestureWarnsOnce) {
  for (int i = 0; i < 3; ++i) enable("mouseSwipe3Nav");
  EXPECT_EQ(alerts_.shown.size(), 1U);
  EXPECT_TRUE(defaults_.boolean("conflictWarned.mouseSwipe3Nav"));
}

TEST_F(ConflictCheckerTest, OnceEvenBeforeTheAlertWasSeen) {
  checker_.checkAfterEnabling("mouseSwipe3Nav");
  checker_.checkAfterEnabling("mouseSwipe3Nav");
  queue_.runDue();
  EXPECT_EQ(alerts_.shown.size(), 1U);
}

TEST_F(ConflictCheckerTest, TwoGesturesOfOneOverlapWarnTwiceWithTheSameText) {
  system_.set(kWirelessMouse, kTwoFingerSwipe, 1);
  enable("mouseClick2");
  enable("mousePinchZoom");
  ASSERT_EQ(alerts_.shown.size(), 2U);
  EXPECT_EQ(alerts_.shown[0].informativeText, alerts_.shown[1].informativeText);
}

TEST_F(ConflictCheckerTest, AnEarlierLaunchMayHaveWarned) {
  defaults_.set("conflictWarned.mouseSwipe3Nav", true);
  enable("mouseSwipe3Nav");
  EXPECT_TRUE(alerts_.shown.empty());
}

}  // namespace
}  // namespace velotap
