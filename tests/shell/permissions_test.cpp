#include "shell/permissions.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "adapters/simulated/simulated_preferences.hpp"
#include "support/recording_log.hpp"
#include "support/virtual_time.hpp"

namespace velotap {
namespace {

using Lines = std::vector<std::string>;

class PermissionsTest : public ::testing::Test {
 protected:
  PermissionsTest() { make(); }

  void make(bool systemTells = false) {
    Permissions::Closures closures{.readTrust =
                                       [this] {
                                         ++reads_;
                                         return trusted_;
                                       },
                                   .requestTrust =
                                       [this] {
                                         calls_.emplace_back("prompt");
                                         if (grantsAtOnce_) trusted_ = true;
                                       }};
    if (systemTells) {
      closures.observeTrust = [this](std::function<void()> changed) {
        return hints_.add(std::move(changed));
      };
    }
    permissions_ = std::make_unique<Permissions>(defaults_, queue_, std::move(closures));
    observation_ = permissions_->observeGranted([this](bool granted) {
      calls_.emplace_back(granted ? "published granted" : "published missing");
    });
  }
  void monitor() {
    permissions_->startMonitoring(
        [this](bool granted) { calls_.emplace_back(granted ? "granted" : "missing"); });
  }
  Lines take() { return std::exchange(calls_, {}); }

  test::ExactClock clock_;
  test::VirtualQueue queue_{clock_};
  SimulatedPreferences preferences_;
  test::RecordingLog log_;
  DefaultsStore defaults_{preferences_, log_};
  ObserverList<> hints_;
  bool trusted_ = false;
  bool grantsAtOnce_ = false;
  int reads_ = 0;
  Lines calls_;
  std::unique_ptr<Permissions> permissions_;
  Observation observation_;
};

TEST_F(PermissionsTest, KnowsTheTrustFromTheStart) {
  EXPECT_FALSE(permissions_->granted());
  trusted_ = true;
  make();
  EXPECT_TRUE(permissions_->granted());
  EXPECT_EQ(take(), Lines{});
}

TEST_F(PermissionsTest, DeliversThePresentStateAtOnce) {
  monitor();
  EXPECT_EQ(take(), Lines{"missing"});
}

TEST_F(PermissionsTest, DeliversAgainWhenMonitoringStartsAgain) {
  monitor();
  monitor();
  EXPECT_EQ(take(), (Lines{"missing", "missing"}));
  EXPECT_EQ(queue_.pending(), 1U);
}

TEST_F(PermissionsTest, PollsOnceASecond) {
  monitor();
  take();
  trusted_ = true;
  queue_.advance(0.999);
  EXPECT_EQ(take(), Lines{});
  queue_.advance(0.001);
  EXPECT_EQ(take(), (Lines{"published granted", "granted"}));
  const int before = reads_;
  queue_.advance(5.0);
  EXPECT_EQ(reads_, before + 5);
  EXPECT_EQ(take(), Lines{});
}

TEST_F(PermissionsTest, TellsEachRealChangeOnce) {
  monitor();
  for (const bool trusted : {true, true, false, false, true}) {
    trusted_ = trusted;
    queue_.advance(1.0);
  }
  EXPECT_EQ(take(), (Lines{"missing", "published granted", "granted", "published missing",
                           "missing", "published granted", "granted"}));
}

TEST_F(PermissionsTest, PublishesWithoutMonitoring) {
  trusted_ = true;
  permissions_->refresh();
  EXPECT_EQ(take(), Lines{"published granted"});
  EXPECT_TRUE(permissions_->granted());
}

TEST_F(PermissionsTest, AfterStoppingNothingIsToldAndNothingPolls) {
  monitor();
  take();
  permissions_->stopMonitoring();
  EXPECT_EQ(queue_.pending(), 0U);
  trusted_ = true;
  queue_.advance(3.0);
  EXPECT_EQ(take(), Lines{});
  permissions_->refresh();
  EXPECT_EQ(take(), Lines{"published granted"});
  monitor();
  EXPECT_EQ(take(), Lines{"granted"});
}

TEST_F(PermissionsTest, MayBeStoppedFromInsideTheDelivery) {
  permissions_->startMonitoring([this](bool) {
    calls_.emplace_back("told");
    permissions_->stopMonitoring();
  });
  EXPECT_EQ(take(), Lines{"told"});
  EXPECT_EQ(queue_.pending(), 0U);
}

TEST_F(PermissionsTest, EndsItsPollWithItself) {
  monitor();
  permissions_.reset();
  EXPECT_EQ(queue_.pending(), 0U);
}

TEST_F(PermissionsTest, WhereTheSystemTellsAGivenPermissionIsNotPolled) {
  trusted_ = true;
  make(true);
  monitor();
  EXPECT_EQ(take(), Lines{"granted"});
  EXPECT_EQ(queue_.pending(), 0U);
  trusted_ = false;
  hints_.notify();
  EXPECT_EQ(take(), (Lines{"published missing", "missing"}));
  EXPECT_EQ(queue_.pending(), 1U) << "a missing one is polled all the same";
  trusted_ = true;
  queue_.advance(1.0);
  EXPECT_EQ(take(), (Lines{"published granted", "granted"}));
  EXPECT_EQ(queue_.pending(), 0U);
}

TEST_F(PermissionsTest, ASystemThatTellsForNothingChangesNothing) {
  make(true);
  monitor();
  take();
  hints_.notify();
  hints_.notify();
  EXPECT_EQ(take(), Lines{});
  permissions_->stopMonitoring();
  trusted_ = true;
  hints_.notify();
  EXPECT_EQ(take(), Lines{});
}

TEST_F(PermissionsTest, PromptsAtMostOnceInARun) {
  permissions_->requestOnce();
  permissions_->requestOnce();
  EXPECT_EQ(take(), Lines{"prompt"});
  EXPECT_TRUE(permissions_->requestedThisSession());
}

TEST_F(PermissionsTest, DoesNotPromptForWhatIsGiven) {
  trusted_ = true;
  permissions_->refresh();
  take();
  permissions_->requestOnce();
  EXPECT_EQ(take(), Lines{});
  EXPECT_FALSE(permissions_->requestedThisSession());
}

TEST_F(PermissionsTest, LooksAgainRightAfterThePrompt) {
  grantsAtOnce_ = true;
  permissions_->requestOnce();
  EXPECT_EQ(take(), (Lines{"prompt", "published granted"}));
}

TEST_F(PermissionsTest, PresentsItselfAtTheFirstLaunchOnly) {
  EXPECT_TRUE(permissions_->takeInitialPresentation(true));
  EXPECT_TRUE(defaults_.boolean("accessibilitySetupPresented"));
  EXPECT_FALSE(permissions_->takeInitialPresentation(true));
  make();
  EXPECT_FALSE(permissions_->takeInitialPresentation(true));
}

TEST_F(PermissionsTest, DoesNotPresentItselfWhenSwitchedOffAndNeverLaterEither) {
  EXPECT_FALSE(permissions_->takeInitialPresentation(false));
  EXPECT_TRUE(defaults_.boolean("accessibilitySetupPresented"));
  EXPECT_FALSE(permissions_->takeInitialPresentation(true));
}

TEST_F(PermissionsTest, DoesNotPresentItselfWhenTrusted) {
  trusted_ = true;
  permissions_->refresh();
  EXPECT_FALSE(permissions_->takeInitialPresentation(true));
  EXPECT_TRUE(defaults_.boolean("accessibilitySetupPresented"));
}

}  // namespace
}  // namespace velotap
