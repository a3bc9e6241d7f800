#include "input/device_watcher.hpp"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "support/fake_ports.hpp"
#include "support/virtual_time.hpp"

namespace velotap {
namespace {

class DeviceWatcherTest : public ::testing::Test {
 protected:
  void start() {
    watcher_->start([this] { add("pause"); }, [this] { add("restart"); });
  }
  void add(const char* what) {
    EXPECT_TRUE(queue_.isCurrent());
    happened_.push_back(what + (" " + std::to_string(clock_.uptime() - 1000)).substr(0, 5));
  }
  std::vector<std::string> take() { return std::exchange(happened_, {}); }
  using Happened = std::vector<std::string>;

  test::ManualClock clock_;
  test::VirtualQueue queue_{clock_};
  test::FakeNotices notices_;
  test::RecordingLog log_;
  std::optional<DeviceWatcher> watcher_{std::in_place, clock_, queue_, notices_, log_};
  Happened happened_;
};

TEST_F(DeviceWatcherTest, AnAttachedDeviceRestartsAfterTwoSecondsWithoutAPause) {
  start();
  notices_.attached.notify();
  queue_.advance(1.999);
  EXPECT_EQ(take(), Happened{});
  queue_.advance(0.002);
  EXPECT_EQ(take(), Happened{"restart 2.00"});
  queue_.advance(100);
  EXPECT_EQ(take(), Happened{});
  EXPECT_EQ(log_.take(), Happened{"multitouch device attached — restart in 2s"});
}

TEST_F(DeviceWatcherTest, ADetachedDevicePausesAtOnceAndRestartsAfterTwoSeconds) {
  start();
  notices_.detached.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.00", "restart 2.00"}));
  EXPECT_EQ(log_.take(), Happened{"multitouch device detached — pausing and restarting in 2s"});
}

TEST_F(DeviceWatcherTest, ADisplayChangePausesAtOnceAndRestartsAfterTwoSeconds) {
  start();
  notices_.displays.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.00", "restart 2.00"}));
  EXPECT_EQ(log_.take(), Happened{"display reconfigured — restart in 2s"});
}

TEST_F(DeviceWatcherTest, SleepOnlyPausesAndTheWakeRestartsAfterTenSeconds) {
  start();
  notices_.willSleep.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), Happened{"pause 0.00"});
  EXPECT_EQ(log_.take(), Happened{"system will sleep — pausing listeners"});
  notices_.didWake.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 100.", "restart 110."}));
  EXPECT_EQ(log_.take(), Happened{"system woke — restart in 10s"});
}

TEST_F(DeviceWatcherTest, ADisplayChangeAfterAWakePausesAgainButBringsNothingForward) {
  start();
  notices_.didWake.notify();
  queue_.advance(1);
  notices_.displays.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.00", "pause 1.00", "restart 10.0"}));
}

TEST_F(DeviceWatcherTest, ALaterDeadlineReplacesAPendingOne) {
  start();
  notices_.displays.notify();
  queue_.advance(1);
  notices_.displays.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.00", "pause 1.00", "restart 3.00"}));
}

TEST_F(DeviceWatcherTest, TheSameDeadlineAgainKeepsThePendingRestart) {
  start();
  watcher_->scheduleRestart(3, false);
  queue_.runDue();
  EXPECT_EQ(queue_.pending(), 1U);
  queue_.advance(1);
  watcher_->scheduleRestart(2, true);
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 1.00", "restart 3.00"}));
}

TEST_F(DeviceWatcherTest, SleepCancelsAPendingRestart) {
  start();
  notices_.attached.notify();
  queue_.advance(1);
  notices_.willSleep.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), Happened{"pause 1.00"});
  EXPECT_EQ(queue_.pending(), 0U);
  notices_.attached.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), Happened{"restart 103."}) << "what was cancelled covers nothing any more";
}

TEST_F(DeviceWatcherTest, AFiredRestartCoversNothingAnyMore) {
  start();
  notices_.attached.notify();
  queue_.advance(2);
  notices_.attached.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"restart 2.00", "restart 4.00"}));
}

TEST_F(DeviceWatcherTest, ARestartMayAskForAnother) {
  int rounds = 0;
  watcher_->start({}, [&] {
    add("restart");
    if (++rounds == 1) watcher_->scheduleRestart(2, false);
  });
  notices_.attached.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"restart 2.00", "restart 4.00"}));
}

TEST_F(DeviceWatcherTest, StartingTwiceInstallsNothingTwice) {
  start();
  start();
  EXPECT_EQ(notices_.deviceWatches, 1);
  EXPECT_EQ(notices_.sleepWatches, 1);
  EXPECT_EQ(notices_.displayWatches, 1);
  notices_.detached.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.00", "restart 2.00"}));
}

TEST_F(DeviceWatcherTest, BeforeItIsStartedARequestHasNobodyToCall) {
  watcher_->scheduleRestart(1, true);
  watcher_->pauseForSleepFromCallback();
  queue_.advance(100);
  EXPECT_EQ(take(), Happened{});
}

TEST_F(DeviceWatcherTest, WithoutAPortTheOtherNoticesStillWork) {
  notices_.failures.portFailed = true;
  start();
  EXPECT_EQ(log_.take(), Happened{"IONotificationPortCreate failed"});
  notices_.attached.notify();
  notices_.detached.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), Happened{});
  notices_.displays.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 100.", "restart 102."}));
}

TEST_F(DeviceWatcherTest, EachWatchFailsOnItsOwn) {
  notices_.failures.attachError = -536870206;
  notices_.failures.detachError = 5;
  start();
  EXPECT_EQ(log_.take(), (Happened{"IOServiceAddMatchingNotification failed: -536870206",
                                   "IOServiceAddMatchingNotification(terminated) failed: 5"}));
}

TEST_F(DeviceWatcherTest, AFailedAttachWatchLeavesDetachments) {
  notices_.failures.attachError = 5;
  start();
  notices_.detached.notify();
  queue_.advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.00", "restart 2.00"}));
}

TEST_F(DeviceWatcherTest, SaysNothingWhenNobodyAsked) {
  log_.on = false;
  notices_.failures.attachError = 5;
  start();
  notices_.detached.notify();
  notices_.didWake.notify();
  queue_.advance(100);
  EXPECT_EQ(log_.take(), Happened{});
}

TEST_F(DeviceWatcherTest, TasksOfAWatcherThatIsGoneDoNothing) {
  start();
  notices_.detached.notify();  // hops to the main queue
  queue_.runDue();             // pauses, leaves a restart pending
  notices_.displays.notify();  // still on its way
  take();
  watcher_.reset();
  queue_.advance(100);
  EXPECT_EQ(take(), Happened{});
  notices_.attached.notify();  // nobody listens any more
  EXPECT_EQ(queue_.pending(), 0U);
}

TEST_F(DeviceWatcherTest, NoticesOfManyThreadsAreHandledOnTheMainOne) {
  start();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([this] {
      for (int k = 0; k < 200; ++k) notices_.displays.notify();
    });
  }
  for (int k = 0; k < 200; ++k) queue_.runDue();
  for (auto& thread : threads) thread.join();
  queue_.advance(100);
  const Happened happened = take();
  EXPECT_EQ(happened.size(), 801U);
  EXPECT_EQ(happened.back(), "restart 2.00");
}

}  // namespace
}  // namespace velotap
