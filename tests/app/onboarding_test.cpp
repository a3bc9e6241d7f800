#include "app/onboarding.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/shell_fakes.hpp"
#include "support/desktop.hpp"

namespace velotap {
namespace {

using test::Lines;

TEST(OnboardingFrame, IsMovedAsLittleAsItTakes) {
  const ScreenFrame screen{.x = 100, .y = 30, .width = 800, .height = 600};
  const auto kept = [&](double x, double y) {
    const ScreenFrame frame = keptInside({.x = x, .y = y, .width = 520, .height = 500}, screen);
    EXPECT_EQ(frame.width, 520);
    EXPECT_EQ(frame.height, 500);
    return std::pair(frame.x, frame.y);
  };
  EXPECT_EQ(kept(200, 60), std::pair(200.0, 60.0)) << "it is inside";
  EXPECT_EQ(kept(100, 30), std::pair(100.0, 30.0));
  EXPECT_EQ(kept(380, 130), std::pair(380.0, 130.0));
  EXPECT_EQ(kept(381, 131), std::pair(380.0, 130.0));
  EXPECT_EQ(kept(99, 29), std::pair(100.0, 30.0));
  EXPECT_EQ(kept(5000, -5000), std::pair(380.0, 30.0));
}

TEST(OnboardingFrame, ShowsItsTopLeftWhereItDoesNotFit) {
  const ScreenFrame screen{.x = 10, .y = 20, .width = 300, .height = 200};
  const ScreenFrame frame = keptInside({.x = 50, .y = 50, .width = 520, .height = 500}, screen);
  EXPECT_EQ(frame, (ScreenFrame{.x = 10, .y = 20, .width = 520, .height = 500}));
}

TEST(OnboardingHeight, IsWhatTheScreenLeavesWithinLimits) {
  EXPECT_EQ(onboardingMaximumHeight(std::nullopt), 500);
  EXPECT_EQ(onboardingMaximumHeight(1080.0), 500);
  EXPECT_EQ(onboardingMaximumHeight(533.0), 500);
  EXPECT_EQ(onboardingMaximumHeight(532.0), 500);
  EXPECT_EQ(onboardingMaximumHeight(531.0), 499);
  EXPECT_EQ(onboardingMaximumHeight(34.0), 2);
  EXPECT_EQ(onboardingMaximumHeight(33.0), 1);
  EXPECT_EQ(onboardingMaximumHeight(10.0), 1);
}

class OnboardingTest : public ::testing::Test, protected test::Desktop {
 protected:
  OnboardingTest() {
    trust.setTrusted(false);
    permissions_.refresh();
    onboarding_.setView(
        {.create =
             [this](const std::string& title, double height) {
               calls_.push_back("create " + title + " " + std::to_string(static_cast<int>(height)));
             },
         .bringToFront = [this] { calls_.emplace_back("front"); },
         .close = [this] { calls_.emplace_back("close"); },
         .isVisible = [this] { return visible_; },
         .setTitle = [this](const std::string& title) { calls_.push_back("title " + title); },
         .visibleScreenHeight = [this] { return screen_; },
         .openPractice = [this] { calls_.emplace_back("practice"); }});
  }
  Lines take() { return std::exchange(calls_, {}); }
  void grant(bool trusted) {
    trust.setTrusted(trusted);
    permissions_.refresh();
  }

  DefaultsStore defaults_{preferences, log};
  Lines calls_;
  std::optional<double> screen_ = 400;
  bool visible_ = true;
  bool opens_ = true;
  bool leftClickToggles_ = false;
  Permissions permissions_{defaults_,
                           mainQueue,
                           {.readTrust = [this] { return trust.trusted(); },
                            .requestTrust = [this] { calls_.emplace_back("prompt"); }}};
  test::FakeAnnouncements announced_;
  AccessibilityAnnouncements announcements_{announced_};
  Onboarding::Effects effects_{
      .openTrustSettings =
          [this] {
            calls_.emplace_back("settings page");
            return opens_;
          },
      .revealProgram =
          [this] {
            calls_.emplace_back("reveal");
            return true;
          },
      .leftClickToggles = [this] { return leftClickToggles_; },
      .application = {.activate = [this] { calls_.emplace_back("activate"); },
                      .terminate = {},
                      .openSettings = [this](SettingsPane) { calls_.emplace_back("settings"); }}};
  Onboarding onboarding_{permissions_, announcements_, effects_,
                         [](std::string_view key) { return std::string(key); }};
};

TEST_F(OnboardingTest, MakesOneWindowAndBringsItBack) {
  onboarding_.show();
  EXPECT_EQ(take(), (Lines{"create Set Up Velotap 368", "activate"}));
  onboarding_.show();
  EXPECT_EQ(take(), (Lines{"activate", "front"}));
}

TEST_F(OnboardingTest, MakesAFreshWindowOnceTheOldOneIsClosed) {
  onboarding_.show();
  onboarding_.windowWillClose();
  EXPECT_FALSE(onboarding_.exists());
  take();
  screen_ = std::nullopt;
  onboarding_.show();
  EXPECT_EQ(take()[0], "create Set Up Velotap 500");
}

TEST_F(OnboardingTest, LooksAtThePermissionFirst) {
  trust.setTrusted(true);
  onboarding_.show();
  EXPECT_TRUE(permissions_.granted());
  EXPECT_TRUE(onboarding_.content().granted);
}

TEST_F(OnboardingTest, IsVisibleOnlyAsLongAsItExists) {
  EXPECT_FALSE(onboarding_.isVisible());
  onboarding_.show();
  EXPECT_TRUE(onboarding_.isVisible());
  visible_ = false;
  EXPECT_FALSE(onboarding_.isVisible());
  visible_ = true;
  onboarding_.windowWillClose();
  EXPECT_FALSE(onboarding_.isVisible());
}

TEST_F(OnboardingTest, WithoutAViewThereIsNoWindow) {
  onboarding_.setView({});
  onboarding_.show();
  EXPECT_FALSE(onboarding_.exists());
  onboarding_.setUpLater();
  onboarding_.tryMiddleClick();
}

TEST_F(OnboardingTest, ShowsTheSystemsPromptAtMostOnce) {
  EXPECT_TRUE(onboarding_.openAccessibilitySettings());
  EXPECT_TRUE(onboarding_.openAccessibilitySettings());
  EXPECT_EQ(take(), (Lines{"prompt", "settings page", "settings page"}));
}

TEST_F(OnboardingTest, DoesNotPromptOnceGranted) {
  trust.setTrusted(true);
  EXPECT_TRUE(onboarding_.openAccessibilitySettings());
  EXPECT_EQ(take(), Lines{"settings page"});
}

TEST_F(OnboardingTest, SaysWhenTheSettingsDoNotOpenAndStopsSayingItWhenTheyDo) {
  onboarding_.show();
  EXPECT_EQ(onboarding_.content().settingsError, "");
  opens_ = false;
  EXPECT_FALSE(onboarding_.openAccessibilitySettings());
  EXPECT_EQ(onboarding_.content().settingsError, "onboarding.permission.openFailed");
  opens_ = true;
  EXPECT_TRUE(onboarding_.openAccessibilitySettings());
  EXPECT_EQ(onboarding_.content().settingsError, "");
}

TEST_F(OnboardingTest, ExplainsTheMissingPermission) {
  const OnboardingContent shown = onboarding_.content();
  EXPECT_FALSE(shown.granted);
  EXPECT_EQ(shown.symbol, "hand.raised.fill");
  EXPECT_EQ(shown.title, "Accessibility permission required");
  EXPECT_EQ(shown.explanation, "onboarding.permission.purpose");
  EXPECT_EQ(shown.stepsHeading, "onboarding.step.accessibility");
  EXPECT_EQ(shown.steps, (Lines{"onboarding.permission.step1", "onboarding.permission.step2",
                                "onboarding.permission.step3"}));
  EXPECT_EQ(shown.mainButton, "Open System Settings");
  EXPECT_EQ(shown.waiting, "onboarding.permission.waiting");
  EXPECT_EQ(shown.helpHeading, "Missing from the list or still not working?");
  EXPECT_EQ(shown.help, (Lines{"onboarding.permission.missing", "onboarding.permission.refresh"}));
  EXPECT_EQ(shown.revealButton, "Show Velotap in Finder");
  EXPECT_EQ(shown.laterButton, "Set Up Later");
  EXPECT_EQ(shown.laterNote, "onboarding.permission.later");
}

TEST_F(OnboardingTest, GivesTipsOnceGranted) {
  grant(true);
  OnboardingContent shown = onboarding_.content();
  EXPECT_EQ(shown.symbol, "checkmark.circle.fill");
  EXPECT_EQ(shown.title, "Permission granted");
  EXPECT_EQ(shown.explanation, "Accessibility is enabled");
  EXPECT_EQ(shown.tips, Lines{"onboarding.menu.open"});
  leftClickToggles_ = true;
  EXPECT_EQ(onboarding_.content().tips, (Lines{"onboarding.menu.open", "onboarding.menu.toggle"}));
  EXPECT_EQ(shown.practiceButton, "Try a middle click");
  EXPECT_EQ(shown.continueButton, "Continue to Settings");
}

TEST_F(OnboardingTest, MovesOnByItselfAndSaysSo) {
  onboarding_.show();
  int redrawn = 0;
  const Observation observation = onboarding_.observe([&redrawn] { ++redrawn; });
  grant(true);
  EXPECT_EQ(redrawn, 1);
  EXPECT_EQ(announced_.spoken, Lines{"Permission granted (50)"});
  grant(false);
  EXPECT_EQ(redrawn, 2);
  EXPECT_EQ(announced_.spoken.size(), 1U);
}

TEST_F(OnboardingTest, WithoutAWindowNothingIsSpoken) {
  grant(true);
  EXPECT_EQ(announced_.spoken, Lines{});
  onboarding_.show();
  onboarding_.windowWillClose();
  grant(false);
  grant(true);
  EXPECT_EQ(announced_.spoken, Lines{});
}

TEST_F(OnboardingTest, ItsButtonsDoWhatTheySay) {
  onboarding_.show();
  take();
  onboarding_.revealProgram();
  onboarding_.setUpLater();
  onboarding_.tryMiddleClick();
  onboarding_.continueToSettings();
  EXPECT_EQ(take(), (Lines{"reveal", "close", "practice", "settings", "close"}));
}

TEST_F(OnboardingTest, TheTitleFollowsTheLanguageOfAnExistingWindow) {
  onboarding_.refreshTitle();
  EXPECT_EQ(take(), Lines{});
  onboarding_.show();
  take();
  onboarding_.refreshTitle();
  EXPECT_EQ(take(), Lines{"title Set Up Velotap"});
}

TEST_F(OnboardingTest, OtherSystemsExplainTheirOwnWay) {
  const Onboarding linux(
      permissions_, announcements_, effects_, [](std::string_view key) { return std::string(key); },
      "linux");
  const OnboardingContent shown = linux.content();
  EXPECT_EQ(shown.explanation, "onboarding.permission.purpose.linux");
  EXPECT_EQ(shown.steps[0], "onboarding.permission.step1.linux");
  EXPECT_EQ(shown.mainButton, "Open System Settings.linux");
  EXPECT_EQ(shown.title, "Accessibility permission required");
  EXPECT_EQ(shown.laterButton, "Set Up Later");
}

}  // namespace
}  // namespace velotap
