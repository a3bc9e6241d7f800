#include "adapters/linux/output/paced_output.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "recording_device.hpp"

namespace velotap {
namespace {

using Change = ClickPacer::Change;
using Seconds = std::chrono::duration<double>;

// The report is a plain function, so what it was told is kept outside of any fixture.
std::mutex reportsLock;
std::vector<std::pair<std::string, int>> reports;

void report(const char* message, int error) {
  const std::lock_guard guard(reportsLock);
  reports.emplace_back(message, error);
}

std::vector<std::pair<std::string, int>> reported() {
  const std::lock_guard guard(reportsLock);
  return reports;
}

// A time that never comes: what is set for it stays set.
class StoppedClock final : public Clock {
 public:
  [[nodiscard]] double uptime() const noexcept override { return 1e9; }
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override { return {}; }
};

class PacedOutputTest : public testing::Test {
 protected:
  PacedOutputTest() {
    const std::lock_guard guard(reportsLock);
    reports.clear();
  }

  static void click(PacedOutput& output) {
    output.postMiddle(Change::press);
    output.postMiddle(Change::release);
  }

  PosixClock clock;
  StoppedClock stopped;
  RecordingDevice device;
};

// Whether any timer of this process is set, as the kernel tells it.
bool anyTimerSet() {
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
    std::ifstream info(entry.path());
    for (std::string line; std::getline(info, line);) {
      if (line.starts_with("it_value:") && line.find("(0, 0)") == std::string::npos) return true;
    }
  }
  return false;
}

TEST_F(PacedOutputTest, DeviceIsThereBeforeTheFirstClick) {
  PacedOutput output(device, clock, &report);
  EXPECT_EQ(device.creations(), 1);
  EXPECT_TRUE(device.frames().empty());
}

TEST_F(PacedOutputTest, PressIsWrittenByThePostingThreadBeforeItReturns) {
  PacedOutput output(device, clock, &report);
  output.postMiddle(Change::press);
  const auto frames = device.frames();
  ASSERT_EQ(spoken(frames), "+274");
  EXPECT_EQ(frames[0].thread, std::this_thread::get_id());
}

TEST_F(PacedOutputTest, ReleaseFollowsFromAnotherThreadAfterTheHold) {
  PacedOutput output(device, clock, &report);
  click(output);
  const auto frames = device.awaitFrames(2);
  ASSERT_EQ(spoken(frames), "+274 -274");
  EXPECT_NE(frames[1].thread, std::this_thread::get_id());
  EXPECT_GE(Seconds(frames[1].time - frames[0].time).count(), ClickPacer::kSmallestHold);
}

TEST_F(PacedOutputTest, SecondClickKeepsTheGap) {
  PacedOutput output(device, clock, &report);
  click(output);
  click(output);
  const auto frames = device.awaitFrames(4);
  ASSERT_EQ(spoken(frames), "+274 -274 +274 -274");
  EXPECT_GE(Seconds(frames[2].time - frames[1].time).count(), ClickPacer::kSmallestGap);
  EXPECT_GE(Seconds(frames[3].time - frames[2].time).count(), ClickPacer::kSmallestHold);
}

TEST_F(PacedOutputTest, LoneReleaseIsWrittenAtOnce) {
  PacedOutput output(device, clock, &report);
  output.postMiddle(Change::release);
  EXPECT_EQ(spoken(device.frames()), "-274");
}

TEST_F(PacedOutputTest, TimerIsSetOnlyWhileSomethingIsDue) {
  PacedOutput output(device, stopped, &report);
  EXPECT_FALSE(anyTimerSet()) << "at rest";
  output.postMiddle(Change::press);
  EXPECT_FALSE(anyTimerSet()) << "a held button waits for nothing";
  output.postMiddle(Change::release);
  EXPECT_TRUE(anyTimerSet());
}

TEST_F(PacedOutputTest, NoTimerIsLeftBehindAClick) {
  PacedOutput output(device, clock, &report);
  click(output);
  static_cast<void>(device.awaitFrames(2));
  EXPECT_FALSE(anyTimerSet());
}

TEST_F(PacedOutputTest, EndReleasesAHeldButtonAndThenTheDevice) {
  {
    PacedOutput output(device, clock, &report);
    output.postMiddle(Change::press);
  }
  EXPECT_EQ(spoken(device.frames()), "+274 -274");
  EXPECT_EQ(device.closings(), 1);
}

TEST_F(PacedOutputTest, EndDoesNotWaitForWhatIsQueued) {
  {
    PacedOutput output(device, stopped, &report);
    for (int i = 0; i < 5; ++i) click(output);
  }
  EXPECT_EQ(spoken(device.frames()), "+274 -274");
}

TEST_F(PacedOutputTest, ChordGoesOutAtOnceEachStepInAFrameOfItsOwn) {
  PacedOutput output(device, clock, &report);
  KeyChord chord;
  chord.modifiers.push(KEY_LEFTCTRL);
  chord.modifiers.push(KEY_LEFTSHIFT);
  chord.key = KEY_EQUAL;
  output.postChord(chord, true);
  output.postChord(chord, false);
  EXPECT_EQ(spoken(device.frames()), "+29 +42 +13 -13 -42 -29");
}

TEST_F(PacedOutputTest, FrameOfSomebodyElseGoesThroughUnchanged) {
  PacedOutput output(device, clock, &report);
  std::array<input_event, 2> frame{};
  frame[0].type = EV_REL;
  frame[0].code = REL_WHEEL_HI_RES;
  frame[0].value = 40;
  EXPECT_TRUE(output.postFrame(frame));
  EXPECT_EQ(spoken(device.frames()), "(2 11 40)(0 0 0)");
}

TEST_F(PacedOutputTest, DeviceThatCannotBeMadeIsReportedOnceAndTriedAgain) {
  device.refuse(EACCES);
  PacedOutput output(device, clock, &report);
  output.postMiddle(Change::press);
  output.postMiddle(Change::release);
  const std::vector<std::pair<std::string, int>> once = {
      {"cannot create the virtual pointer", EACCES}};
  EXPECT_EQ(reported(), once);
  device.refuse(0);
  EXPECT_TRUE(output.postFrame({}));
  EXPECT_EQ(device.creations(), 1);
  EXPECT_EQ(reported(), once);
}

TEST_F(PacedOutputTest, LostDeviceIsReportedOnceForEachLossAndMadeAnew) {
  PacedOutput output(device, clock, &report);
  output.postMiddle(Change::press);
  device.lose(true);
  EXPECT_FALSE(output.postFrame({}));
  EXPECT_FALSE(output.postFrame({}));
  const std::pair<std::string, int> loss = {"the virtual pointer was lost", 0};
  EXPECT_EQ(reported(), std::vector{loss});
  device.lose(false);
  EXPECT_TRUE(output.postFrame({}));
  EXPECT_EQ(device.creations(), 3) << "one more for each event after a loss";
  device.lose(true);
  EXPECT_FALSE(output.postFrame({}));
  EXPECT_EQ(reported(), (std::vector{loss, loss}));
}

TEST_F(PacedOutputTest, ManyThreadsNeverLeaveTheButtonDown) {
  {
    PacedOutput output(device, clock, &report);
    std::vector<std::thread> posters;
    for (int i = 0; i < 4; ++i) {
      posters.emplace_back([&output] {
        for (int n = 0; n < 50; ++n) click(output);
      });
    }
    for (auto& poster : posters) poster.join();
  }
  const auto frames = device.frames();
  ASSERT_FALSE(frames.empty());
  EXPECT_EQ(spoken(frames.back()), "-274");
}

}  // namespace
}  // namespace velotap
