#include "gestures/tap_activity_log.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <thread>

#include "support/desktop.hpp"

namespace velotap {
namespace {

using Outcome = TapActivity::Outcome;

TapActivity activity(int fingers = 3) {
  return {.id = 99,
          .date = std::chrono::system_clock::time_point(std::chrono::seconds(5)),
          .deviceClass = DeviceClass::magicMouse,
          .fingers = fingers,
          .duration = 0.1,
          .drift = 0.01,
          .maxDuration = 0.3,
          .maxDrift = 0.05,
          .outcome = Outcome::moved};
}

class TapActivityLogTest : public ::testing::Test, protected test::Desktop {
 protected:
  std::vector<int> ids() const {
    std::vector<int> result;
    for (const TapActivity& item : log_->items()) result.push_back(item.id);
    return result;
  }
  std::optional<TapActivityLog> log_{std::in_place, mainQueue, notifications};
  int notified_ = 0;
  Observation observation_ = notifications.observe("VelotapTapActivityDidChange", [this] {
    ++notified_;
    // Reading from an observer must be possible: no lock is held.
    static_cast<void>(log_->items());
  });
};

TEST_F(TapActivityLogTest, StartsEmpty) {
  EXPECT_TRUE(log_->items().empty());
}

TEST_F(TapActivityLogTest, KeepsWhatItIsGivenUnderItsOwnNumber) {
  log_->record(activity());
  TapActivity expected = activity();
  expected.id = 1;
  EXPECT_EQ(log_->items(), std::vector{expected});
}

TEST_F(TapActivityLogTest, KeepsTheEightNewestNewestFirst) {
  for (int i = 0; i < 8; ++i) log_->record(activity());
  EXPECT_EQ(ids(), (std::vector{8, 7, 6, 5, 4, 3, 2, 1}));
  for (int i = 0; i < 2; ++i) log_->record(activity());
  EXPECT_EQ(ids(), (std::vector{10, 9, 8, 7, 6, 5, 4, 3}));
}

TEST_F(TapActivityLogTest, ABurstIsOneNotificationOnTheMainQueue) {
  for (int i = 0; i < 10; ++i) log_->record(activity());
  EXPECT_EQ(notified_, 0);
  mainQueue.runDue();
  EXPECT_EQ(notified_, 1);
  log_->record(activity());
  mainQueue.runDue();
  EXPECT_EQ(notified_, 2) << "a later record notifies again";
}

TEST_F(TapActivityLogTest, ClearingNotifiesAtOnceAndKeepsCounting) {
  for (int i = 0; i < 3; ++i) log_->record(activity());
  mainQueue.runDue();
  notified_ = 0;
  log_->clear();
  EXPECT_EQ(notified_, 1);
  EXPECT_TRUE(log_->items().empty());
  log_->record(activity());
  EXPECT_EQ(ids(), std::vector{4});
}

TEST_F(TapActivityLogTest, ClearingLeavesAScheduledNotificationAlone) {
  log_->record(activity());
  log_->clear();
  EXPECT_EQ(notified_, 1);
  log_->record(activity());
  mainQueue.runDue();
  EXPECT_EQ(notified_, 2);
}

TEST_F(TapActivityLogTest, ClearingAnEmptyListNotifiesToo) {
  log_->clear();
  EXPECT_EQ(notified_, 1);
}

TEST_F(TapActivityLogTest, AScheduledNotificationOfALogThatIsGoneDoesNothing) {
  log_->record(activity());
  log_.reset();
  mainQueue.runDue();
  EXPECT_EQ(notified_, 0);
}

TEST_F(TapActivityLogTest, PinchesAndClicksAreNoTapsButAreTold) {
  int told = 0;
  Observation others = log_->observeOtherTouches([&] {
    ++told;
    static_cast<void>(log_->touches());  // no lock is held
  });
  log_->keepPinch({});
  log_->keepClick({0.5F, 0.5F});
  EXPECT_EQ(told, 0) << "the main thread has not come to it";
  mainQueue.runDue();
  EXPECT_EQ(told, 1) << "a burst is told once";
  log_->keepClick({0.5F, 0.5F});
  mainQueue.runDue();
  EXPECT_EQ(told, 2);
  EXPECT_EQ(notified_, 0);
  others.reset();
  log_->keepClick({0.5F, 0.5F});
  others = log_->observeOtherTouches([&told] { ++told; });
  mainQueue.runDue();
  EXPECT_EQ(told, 2) << "with nobody to tell nobody was woken";
  EXPECT_EQ(log_->touches().clicks.size(), 3U);
}

TEST_F(TapActivityLogTest, WhoStopsListeningInTimeHearsNothing) {
  int told = 0;
  Observation others = log_->observeOtherTouches([&told] { ++told; });
  log_->keepPinch({});
  others.reset();
  mainQueue.runDue();
  EXPECT_EQ(told, 0);
}

TEST_F(TapActivityLogTest, EachRecordIsSeenAtOnceWithItsNumber) {
  std::vector<int> seen;
  const Observation records =
      log_->observeRecords([&seen](const TapActivity& item) { seen.push_back(item.id); });
  log_->record(activity());
  log_->record(activity());
  EXPECT_EQ(seen, (std::vector{1, 2}));
}

TEST_F(TapActivityLogTest, EveryFieldCountsForEquality) {
  const TapActivity base = activity();
  const auto differs = [&base](auto change) {
    TapActivity other = base;
    change(other);
    return other != base;
  };
  EXPECT_TRUE(differs([](auto& a) { a.id = 1; }));
  EXPECT_TRUE(differs([](auto& a) { a.date += std::chrono::seconds(1); }));
  EXPECT_TRUE(differs([](auto& a) { a.deviceClass = DeviceClass::trackpad; }));
  EXPECT_TRUE(differs([](auto& a) { a.fingers = 4; }));
  EXPECT_TRUE(differs([](auto& a) { a.duration = 1; }));
  EXPECT_TRUE(differs([](auto& a) { a.drift = 1; }));
  EXPECT_TRUE(differs([](auto& a) { a.maxDuration = 1; }));
  EXPECT_TRUE(differs([](auto& a) { a.maxDrift = 1; }));
  EXPECT_TRUE(differs([](auto& a) { a.outcome = Outcome::click; }));
}

TEST_F(TapActivityLogTest, ManyThreadsGetDifferentNumbers) {
  std::mutex lock;
  std::set<int> seen;
  const Observation records = log_->observeRecords([&](const TapActivity& item) {
    const std::lock_guard guard(lock);
    EXPECT_TRUE(seen.insert(item.id).second);
  });
  std::vector<std::thread> writers;
  writers.reserve(4);
  for (int i = 0; i < 4; ++i) {
    writers.emplace_back([this] {
      for (int k = 0; k < 500; ++k) log_->record(activity());
    });
  }
  for (int k = 0; k < 500; ++k) {
    mainQueue.runDue();
    EXPECT_LE(log_->items().size(), 8U);
    if (k % 100 == 0) log_->clear();
  }
  for (auto& writer : writers) writer.join();
  EXPECT_EQ(seen.size(), 2000U);
  EXPECT_EQ(*seen.rbegin(), 2000);
}

}  // namespace
}  // namespace velotap
