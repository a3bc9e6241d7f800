#include "adapters/linux/runtime/posix_main_queue.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "adapters/linux/runtime/posix_clock.hpp"

namespace velotap {
namespace {

using Interest = DescriptorLoop::Interest;

// Both ends of a pipe.
struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    reader = Descriptor(ends[0]);
    writer = Descriptor(ends[1]);
  }
  void put() const { ASSERT_EQ(write(writer.get(), "x", 1), 1); }
  void take() const {
    char c = 0;
    ASSERT_EQ(read(reader.get(), &c, 1), 1);
  }
  Descriptor reader;
  Descriptor writer;
};

class PosixMainQueueTest : public testing::Test {
 protected:
  PosixClock clock;
  PosixMainQueue queue{clock};
  std::string trace;
};

bool anyTimerSet() {
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
    std::ifstream info(entry.path());
    for (std::string line; std::getline(info, line);) {
      if (line.starts_with("it_value:") && line.find("(0, 0)") == std::string::npos) return true;
    }
  }
  return false;
}

TEST_F(PosixMainQueueTest, TasksRunInTheirOrder) {
  for (const char c : {'a', 'b', 'c'}) queue.async([this, c] { trace += c; });
  EXPECT_EQ(trace, "") << "never inside async";
  queue.runReady();
  EXPECT_EQ(trace, "abc");
}

TEST_F(PosixMainQueueTest, ATaskOfATaskRunsLater) {
  queue.async([this] {
    queue.async([this] { trace += "b"; });
    trace += "a";
  });
  queue.runReady();
  EXPECT_EQ(trace, "a");
  queue.runReady();
  EXPECT_EQ(trace, "ab");
}

TEST_F(PosixMainQueueTest, ServingInsideATaskGoesOnWithTheTasksBehindIt) {
  queue.async([this] {
    trace += 'a';
    queue.async([this] { trace += 'c'; });
    queue.runReady();
    trace += 'd';
  });
  queue.async([this] { trace += 'b'; });
  queue.runReady();
  EXPECT_EQ(trace, "abcd");
}

TEST_F(PosixMainQueueTest, TasksOfAnotherThreadWakeTheLoopAndRunOnItsThread) {
  std::thread::id ranOn;
  std::thread poster([&] {
    EXPECT_FALSE(queue.isCurrent());
    queue.async([&] {
      ranOn = std::this_thread::get_id();
      EXPECT_TRUE(queue.isCurrent());
      queue.stop();
    });
  });
  queue.run();
  poster.join();
  EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST_F(PosixMainQueueTest, ManyThreadsLoseNothing) {
  int count = 0;
  std::vector<std::thread> posters;
  for (int i = 0; i < 4; ++i) {
    posters.emplace_back([&] {
      for (int n = 0; n < 250; ++n) {
        queue.async([&] {
          if (++count == 1000) queue.stop();
        });
      }
    });
  }
  queue.run();
  for (auto& poster : posters) poster.join();
  EXPECT_EQ(count, 1000);
}

TEST_F(PosixMainQueueTest, StopBeforeRunIsNotForgotten) {
  queue.stop();
  queue.run();
  queue.async([this] {
    trace += "a";
    queue.stop();
  });
  queue.run();
  EXPECT_EQ(trace, "a") << "one stop ends one run";
}

TEST_F(PosixMainQueueTest, DelayedTasksRunInTheOrderOfTheirTimes) {
  queue.asyncAfter(0.004, [this] {
    trace += "c";
    queue.stop();
  });
  queue.asyncAfter(0.001, [this] { trace += "a"; });
  queue.asyncAfter(0.002, [this] { trace += "b"; });
  queue.run();
  EXPECT_EQ(trace, "abc");
}

TEST_F(PosixMainQueueTest, DelayedTaskIsNeverEarly) {
  const double due = clock.uptime() + 0.005;
  queue.asyncAfter(0.005, [&] {
    EXPECT_GE(clock.uptime(), due);
    queue.stop();
  });
  queue.run();
}

TEST_F(PosixMainQueueTest, NegativeDelayIsNone) {
  queue.asyncAfter(-1, [this] { queue.stop(); });
  queue.run();
}

TEST_F(PosixMainQueueTest, CancelledTaskDoesNotRun) {
  const auto work = queue.asyncAfter(0.001, [this] { trace += "a"; });
  queue.asyncAfter(0.002, [this] { queue.stop(); });
  work->cancel();
  work->cancel();
  queue.run();
  EXPECT_EQ(trace, "");
}

TEST_F(PosixMainQueueTest, TaskCancelledByAnotherThatIsDueWithItDoesNotRun) {
  std::shared_ptr<DelayedWork> second;
  queue.asyncAfter(0, [&] { second->cancel(); });
  second = queue.asyncAfter(0, [this] { trace += "b"; });
  queue.asyncAfter(0.002, [this] { queue.stop(); });
  queue.run();
  EXPECT_EQ(trace, "");
}

TEST_F(PosixMainQueueTest, CancellingInsideTheTaskOrAfterItIsHarmless) {
  std::shared_ptr<DelayedWork> work;
  work = queue.asyncAfter(0, [&] {
    work->cancel();
    trace += "a";
    queue.stop();
  });
  queue.run();
  work->cancel();
  EXPECT_EQ(trace, "a");
}

TEST_F(PosixMainQueueTest, DroppingTheResultDoesNotCancel) {
  queue.asyncAfter(0.001, [this] { queue.stop(); });
  queue.run();
}

TEST_F(PosixMainQueueTest, TimerIsSetOnlyWhileATaskWaits) {
  EXPECT_FALSE(anyTimerSet());
  auto work = queue.asyncAfter(1000, [] {});
  EXPECT_TRUE(anyTimerSet());
  work->cancel();
  queue.asyncAfter(0, [this] { queue.stop(); });
  queue.run();
  EXPECT_FALSE(anyTimerSet()) << "what was cancelled wakes nobody";
}

TEST_F(PosixMainQueueTest, WatchReportsAReadableDescriptorUntilItIsRead) {
  const Pipe pipe;
  const Observation watch =
      queue.watch(pipe.reader.get(), Interest::readable, [this] { trace += "r"; });
  ASSERT_TRUE(watch.active());
  queue.runReady();
  EXPECT_EQ(trace, "");
  pipe.put();
  queue.runReady();
  queue.runReady();
  EXPECT_EQ(trace, "rr") << "level-triggered";
  pipe.take();
  queue.runReady();
  EXPECT_EQ(trace, "rr");
}

TEST_F(PosixMainQueueTest, WritableIsReportedOnlyToWhoAskedForIt) {
  const Pipe pipe;
  Observation watch = queue.watch(pipe.writer.get(), Interest::readable, [this] { trace += "a"; });
  queue.runReady();
  EXPECT_EQ(trace, "");
  watch.reset();
  watch = queue.watch(pipe.writer.get(), Interest::readableOrWritable, [this] { trace += "w"; });
  queue.runReady();
  EXPECT_EQ(trace, "w");
}

TEST_F(PosixMainQueueTest, HangUpIsReported) {
  Pipe pipe;
  const Observation watch =
      queue.watch(pipe.reader.get(), Interest::readable, [this] { trace += "h"; });
  pipe.writer.reset();
  queue.runReady();
  EXPECT_EQ(trace, "h");
}

TEST_F(PosixMainQueueTest, WithdrawnWatchIsNotCalled) {
  const Pipe pipe;
  Observation watch = queue.watch(pipe.reader.get(), Interest::readable, [this] { trace += "r"; });
  pipe.put();
  watch.reset();
  queue.runReady();
  EXPECT_EQ(trace, "");
}

TEST_F(PosixMainQueueTest, WatchMayWithdrawItselfInsideItsCallback) {
  const Pipe pipe;
  Observation watch;
  watch = queue.watch(pipe.reader.get(), Interest::readable, [&] {
    watch.reset();
    trace += "r";  // the callback is still there to be run to its end
  });
  pipe.put();
  queue.runReady();
  queue.runReady();
  EXPECT_EQ(trace, "r");
}

TEST_F(PosixMainQueueTest, WatchWithdrawnByAnotherOfTheSameRoundIsNotCalled) {
  const Pipe one;
  const Pipe other;
  Observation first;
  Observation second;
  first = queue.watch(one.reader.get(), Interest::readable, [&] {
    second.reset();
    trace += "1";
  });
  second = queue.watch(other.reader.get(), Interest::readable, [&] {
    first.reset();
    trace += "2";
  });
  one.put();
  other.put();
  queue.runReady();
  EXPECT_EQ(trace.size(), 1U);
}

TEST_F(PosixMainQueueTest, NumberUsedAgainBelongsToTheNewWatch) {
  Observation watch;
  {
    const Pipe pipe;
    watch = queue.watch(pipe.reader.get(), Interest::readable, [this] { trace += "old"; });
    pipe.put();
    watch.reset();
  }
  const Pipe pipe;
  watch = queue.watch(pipe.reader.get(), Interest::readable, [this] { trace += "new"; });
  queue.runReady();
  EXPECT_EQ(trace, "");
  pipe.put();
  queue.runReady();
  EXPECT_EQ(trace, "new");
}

TEST_F(PosixMainQueueTest, WhatCannotBeWatchedGivesAnInactiveObservation) {
  const Descriptor file(open("/proc/self/exe", O_RDONLY | O_CLOEXEC));
  ASSERT_TRUE(file.ok());
  EXPECT_FALSE(queue.watch(file.get(), Interest::readable, [] {}).active()) << "a regular file";
  EXPECT_FALSE(queue.watch(-1, Interest::readable, [] {}).active());
}

TEST(PosixMainQueue, ObservationMayOutliveTheQueue) {
  const PosixClock clock;
  const Pipe pipe;
  Observation watch;
  {
    PosixMainQueue queue(clock);
    watch = queue.watch(pipe.reader.get(), Interest::readable, [] {});
  }
  watch.reset();
}

}  // namespace
}  // namespace velotap
