#include "input/device_watcher.hpp"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "support/desktop.hpp"

namespace velotap {
namespace {

using Happened = test::Lines;

class DeviceWatcherTest : public ::testing::Test, protected test::Desktop {
 protected:
  void start() {
    watcher_->start([this] { add("pause"); }, [this] { add("restart"); });
  }
  void add(const std::string& what) {
    EXPECT_TRUE(mainQueue.isCurrent());
    happened_.push_back(what + " " + decimalText(clock.uptime() - SimulatedClock::kUptimeAtStart));
  }
  Happened take() { return std::exchange(happened_, {}); }

  std::optional<DeviceWatcher> watcher_{std::in_place, clock, mainQueue, notices, log};
  Happened happened_;
};

TEST_F(DeviceWatcherTest, AnAttachedDeviceRestartsAfterTwoSecondsWithoutAPause) {
  start();
  notices.deviceAttached();
  advance(1.999);
  EXPECT_EQ(take(), Happened{});
  advance(0.002);
  EXPECT_EQ(take(), Happened{"restart 2.0"});
  advance(100);
  EXPECT_EQ(take(), Happened{});
  EXPECT_EQ(said.take(), Happened{"multitouch device attached — restart in 2s"});
}

TEST_F(DeviceWatcherTest, ADetachedDevicePausesAtOnceAndRestartsAfterTwoSeconds) {
  start();
  notices.deviceDetached();
  advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.0", "restart 2.0"}));
  EXPECT_EQ(said.take(), Happened{"multitouch device detached — pausing and restarting in 2s"});
}

TEST_F(DeviceWatcherTest, ADisplayChangePausesAtOnceAndRestartsAfterTwoSeconds) {
  start();
  notices.displayReconfigured();
  advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.0", "restart 2.0"}));
  EXPECT_EQ(said.take(), Happened{"display reconfigured — restart in 2s"});
}

TEST_F(DeviceWatcherTest, SleepOnlyPausesAndTheWakeRestartsAfterTenSeconds) {
  start();
  notices.willSleep();
  advance(100);
  EXPECT_EQ(take(), Happened{"pause 0.0"});
  EXPECT_EQ(said.take(), Happened{"system will sleep — pausing listeners"});
  notices.didWake();
  advance(100);
  EXPECT_EQ(take(), (Happened{"pause 100.0", "restart 110.0"}));
  EXPECT_EQ(said.take(), Happened{"system woke — restart in 10s"});
}

TEST_F(DeviceWatcherTest, ADisplayChangeAfterAWakePausesAgainButBringsNothingForward) {
  start();
  notices.didWake();
  advance(1);
  notices.displayReconfigured();
  advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.0", "pause 1.0", "restart 10.0"}));
}

TEST_F(DeviceWatcherTest, ALaterDeadlineReplacesAPendingOne) {
  start();
  notices.displayReconfigured();
  advance(1);
  notices.displayReconfigured();
  advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.0", "pause 1.0", "restart 3.0"}));
}

TEST_F(DeviceWatcherTest, TheSameDeadlineAgainKeepsThePendingRestart) {
  start();
  watcher_->scheduleRestart(3, false);
  mainQueue.runDue();
  advance(1);
  watcher_->scheduleRestart(2, true);
  advance(100);
  EXPECT_EQ(take(), (Happened{"pause 1.0", "restart 3.0"}));
}

TEST_F(DeviceWatcherTest, SleepCancelsAPendingRestart) {
  start();
  notices.deviceAttached();
  advance(1);
  notices.willSleep();
  advance(100);
  EXPECT_EQ(take(), Happened{"pause 1.0"});
  notices.deviceAttached();
  advance(100);
  EXPECT_EQ(take(), Happened{"restart 103.0"}) << "what was cancelled covers nothing any more";
}

TEST_F(DeviceWatcherTest, AFiredRestartCoversNothingAnyMore) {
  start();
  notices.deviceAttached();
  advance(2);
  notices.deviceAttached();
  advance(100);
  EXPECT_EQ(take(), (Happened{"restart 2.0", "restart 4.0"}));
}

TEST_F(DeviceWatcherTest, ARestartMayAskForAnother) {
  int rounds = 0;
  watcher_->start({}, [&] {
    add("restart");
    if (++rounds == 1) watcher_->scheduleRestart(2, false);
  });
  notices.deviceAttached();
  advance(100);
  EXPECT_EQ(take(), (Happened{"restart 2.0", "restart 4.0"}));
}

TEST_F(DeviceWatcherTest, StartingTwiceInstallsNothingTwice) {
  start();
  start();
  for (const auto& notice : {&SimulatedNotices::deviceDetached, &SimulatedNotices::willSleep,
                             &SimulatedNotices::didWake, &SimulatedNotices::displayReconfigured}) {
    (notices.*notice)();
    mainQueue.runDue();
    EXPECT_EQ(take(), Happened{"pause 0.0"});
  }
}

TEST_F(DeviceWatcherTest, BeforeItIsStartedARequestHasNobodyToCall) {
  watcher_->scheduleRestart(1, true);
  watcher_->pauseForSleepFromCallback();
  advance(100);
  EXPECT_EQ(take(), Happened{});
}

TEST_F(DeviceWatcherTest, WithoutAPortTheOtherNoticesStillWork) {
  notices.setFailures({.port = true, .attach = {}, .detach = {}});
  start();
  EXPECT_EQ(said.take(), Happened{"IONotificationPortCreate failed"});
  notices.deviceAttached();
  notices.deviceDetached();
  advance(100);
  EXPECT_EQ(take(), Happened{});
  notices.displayReconfigured();
  advance(100);
  EXPECT_EQ(take(), (Happened{"pause 100.0", "restart 102.0"}));
}

TEST_F(DeviceWatcherTest, EachWatchFailsOnItsOwn) {
  notices.setFailures({.port = false, .attach = -536870206, .detach = 5});
  start();
  EXPECT_EQ(said.take(), (Happened{"IOServiceAddMatchingNotification failed: -536870206",
                                   "IOServiceAddMatchingNotification(terminated) failed: 5"}));
}

TEST_F(DeviceWatcherTest, AFailedAttachWatchLeavesDetachments) {
  notices.setFailures({.port = false, .attach = 5, .detach = {}});
  start();
  notices.deviceDetached();
  advance(100);
  EXPECT_EQ(take(), (Happened{"pause 0.0", "restart 2.0"}));
}

TEST_F(DeviceWatcherTest, SaysNothingWhenNobodyAsked) {
  log.setEnabled(false);
  notices.setFailures({.port = false, .attach = 5, .detach = {}});
  start();
  notices.deviceDetached();
  notices.didWake();
  advance(100);
  EXPECT_EQ(said.take(), Happened{});
}

TEST_F(DeviceWatcherTest, TasksOfAWatcherThatIsGoneDoNothing) {
  start();
  notices.deviceDetached();       // hops to the main queue
  mainQueue.runDue();             // pauses, leaves a restart pending
  notices.displayReconfigured();  // still on its way
  take();
  watcher_.reset();
  advance(100);
  EXPECT_EQ(take(), Happened{});
  notices.deviceAttached();  // nobody listens any more
  advance(100);
  EXPECT_EQ(take(), Happened{});
}

TEST_F(DeviceWatcherTest, NoticesOfManyThreadsAreHandledOnTheMainOne) {
  start();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([this] {
      for (int k = 0; k < 200; ++k) notices.displayReconfigured();
    });
  }
  for (int k = 0; k < 200; ++k) mainQueue.runDue();
  for (auto& thread : threads) thread.join();
  advance(100);
  const Happened happened = take();
  EXPECT_EQ(happened.size(), 801U);
  EXPECT_EQ(happened.back(), "restart 2.0");
}

}  // namespace
}  // namespace velotap
