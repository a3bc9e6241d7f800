#include <gtest/gtest.h>

#include <limits>

#include "fakes/fake_runtime.hpp"

namespace velotap::test {
namespace {

TEST(MachClockTest, ticksBecomeSecondsByTheTimebase) {
  FakeMachTime time;
  time.base = {125, 3};  // 24 million ticks a second
  const MachClock clock(time.api());
  time.ticks = 24'000'000;
  EXPECT_DOUBLE_EQ(clock.uptime(), 1.0);
  time.ticks = 24'000'000ULL * 3600 * 24 * 365;
  EXPECT_DOUBLE_EQ(clock.uptime(), 3600.0 * 24 * 365);
}

TEST(MachClockTest, withoutATimebaseATickIsANanosecond) {
  FakeMachTime time;
  time.ticks = 1'500'000'000;
  time.baseFails = true;
  EXPECT_DOUBLE_EQ(MachClock(time.api()).uptime(), 1.5);
  time.baseFails = false;
  time.base = {1, 0};
  EXPECT_DOUBLE_EQ(MachClock(time.api()).uptime(), 1.5);
}

TEST(MachClockTest, theDateIsTheSystems) {
  FakeMachTime time;
  const auto before = std::chrono::system_clock::now();
  const auto date = MachClock(time.api()).date();
  EXPECT_LE(before, date);
  EXPECT_LE(date, std::chrono::system_clock::now());
}

class DispatchMainQueueTest : public ::testing::Test {
 protected:
  FakeDispatch dispatch_;
  DispatchMainQueue queue_{dispatch_.api()};
};

TEST_F(DispatchMainQueueTest, aCancelledTaskLetsGoOfWhatItHeld) {
  const auto held = std::make_shared<int>(1);
  const auto work = queue_.asyncAfter(1, [held] { FAIL(); });
  EXPECT_EQ(held.use_count(), 2);
  work->cancel();
  EXPECT_EQ(held.use_count(), 1);
  dispatch_.advance(1);
}

TEST_F(DispatchMainQueueTest, delaysAreKeptWithinWhatTheSystemCanCount) {
  constexpr double kNever = std::numeric_limits<double>::infinity();
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  for (const double seconds : {-1.0, kNoNumber, 2.0, kNever, 1e300}) {
    queue_.asyncAfter(seconds, [] {})->cancel();
  }
  constexpr std::int64_t kYear = 365LL * 24 * 3600 * 1'000'000'000;
  EXPECT_EQ(dispatch_.delays, (std::vector<std::int64_t>{0, 0, 2'000'000'000, kYear, kYear}));
  dispatch_.advance(366.0 * 24 * 3600);
}

TEST_F(DispatchMainQueueTest, tasksOutliveTheQueueThatTookThem) {
  int ran = 0;
  {
    DispatchMainQueue gone(dispatch_.api());
    gone.async([&] { ++ran; });
    static_cast<void>(gone.asyncAfter(1, [&] { ++ran; }));
  }
  dispatch_.advance(1);
  EXPECT_EQ(ran, 2);
}

TEST(MacLibraryLoaderTest, theFrameworkIsOpenedByItsPathWithAllSymbolsResolved) {
  FakeLinker linker;
  MacLibraryLoader loader(linker.api());
  const std::string path = loader.multitouchLibraryPath();
  EXPECT_EQ(path,
            "/System/Library/PrivateFrameworks/MultitouchSupport.framework/MultitouchSupport");
  EXPECT_EQ(loader.open(path.c_str()), nullptr);
  int there = 0;
  linker.libraries[path] = {{"MTDeviceCreateList", &there}};
  void* handle = loader.open(path.c_str());
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(loader.symbol(handle, "MTDeviceCreateList"), &there);
  EXPECT_EQ(loader.symbol(handle, "MTDeviceIsBuiltIn"), nullptr);
  EXPECT_EQ(linker.modes, (std::vector<int>{2, 2}));
}

}  // namespace
}  // namespace velotap::test
