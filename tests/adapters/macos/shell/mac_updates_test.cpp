#include "adapters/macos/shell/mac_updates.hpp"

#include <gtest/gtest.h>

namespace velotap::test {
namespace {

class FakeUpdater final : public CocoaUpdater {
 public:
  std::string feedNow = "https://updates.example/appcast.xml";
  bool starts = true;
  int startCalls = 0;
  int checks = 0;
  bool automatic = true;
  int automaticSet = 0;
  std::optional<double> last;

  std::string feed() override { return feedNow; }
  bool start() override {
    ++startCalls;
    return starts;
  }
  void checkForUpdates() override { ++checks; }
  bool automaticallyChecks() override { return automatic; }
  void setAutomaticallyChecks(bool on) override {
    automatic = on;
    ++automaticSet;
  }
  std::optional<double> lastCheck() override { return last; }
  Observation observe(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }

  ObserverList<> changes;
};

class MacUpdatesTest : public ::testing::Test {
 protected:
  FakeUpdater updater_;
  MacUpdates updates_{updater_};
};

TEST_F(MacUpdatesTest, theUpdaterIsStartedOnce) {
  EXPECT_EQ(updates_.unavailableReason(), std::nullopt) << "menus ask before anything is started";
  updates_.start();
  updates_.start();
  EXPECT_EQ(updater_.startCalls, 1);
  EXPECT_EQ(updates_.unavailableReason(), std::nullopt);
}

TEST_F(MacUpdatesTest, withoutAFeedNothingIsStartedAndTheReasonIsGiven) {
  updater_.feedNow = "";
  updates_.start();
  updates_.checkForUpdates();
  EXPECT_EQ(updater_.startCalls, 0);
  EXPECT_EQ(updater_.checks, 0);
  EXPECT_EQ(updates_.unavailableReason(), "updates.unavailable.feed");
}

TEST_F(MacUpdatesTest, anUpdaterThatDoesNotStartIsLeftAlone) {
  updater_.starts = false;
  int changed = 0;
  const Observation watching = updates_.observe([&] { ++changed; });
  updates_.start();
  updates_.start();
  updates_.checkForUpdates();
  updates_.setChecksAutomatically(false);
  EXPECT_EQ(changed, 1);
  EXPECT_EQ(updater_.startCalls, 1);
  EXPECT_EQ(updater_.checks, 0);
  EXPECT_EQ(updater_.automaticSet, 0);
  EXPECT_FALSE(updates_.checksAutomatically());
  EXPECT_EQ(updates_.lastCheck(), std::nullopt);
  EXPECT_EQ(updates_.unavailableReason(), "updates.unavailable.trust");
}

TEST_F(MacUpdatesTest, beforeItsStartTheUpdaterIsNotAsked) {
  updater_.last = 1.0;
  updates_.checkForUpdates();
  EXPECT_EQ(updater_.checks, 0);
  EXPECT_FALSE(updates_.checksAutomatically());
  EXPECT_EQ(updates_.lastCheck(), std::nullopt);
}

TEST_F(MacUpdatesTest, checkingAndItsAnswersGoThrough) {
  updates_.start();
  updates_.checkForUpdates();
  EXPECT_EQ(updater_.checks, 1);
  EXPECT_EQ(updates_.lastCheck(), std::nullopt);
  updater_.last = 1234.5;
  ASSERT_TRUE(updates_.lastCheck());
  EXPECT_EQ(updates_.lastCheck()->time_since_epoch(), std::chrono::milliseconds(1234500));
}

TEST_F(MacUpdatesTest, thePersonsChoiceIsWrittenOnlyWhenItIsAnother) {
  updates_.start();
  EXPECT_TRUE(updates_.checksAutomatically());
  updates_.setChecksAutomatically(true);
  EXPECT_EQ(updater_.automaticSet, 0);
  updates_.setChecksAutomatically(false);
  EXPECT_EQ(updater_.automaticSet, 1);
  EXPECT_FALSE(updates_.checksAutomatically());
}

TEST_F(MacUpdatesTest, changesOfTheUpdaterAreTold) {
  int changed = 0;
  Observation watching = updates_.observe([&] { ++changed; });
  updates_.start();
  EXPECT_EQ(changed, 1);
  updater_.changes.notify();
  EXPECT_EQ(changed, 2);
  watching.reset();
  updater_.changes.notify();
  EXPECT_EQ(changed, 2);
}

}  // namespace
}  // namespace velotap::test
