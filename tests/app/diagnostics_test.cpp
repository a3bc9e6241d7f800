#include "app/diagnostics.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <sstream>
#include <vector>

#include "support/fake_multitouch.hpp"
#include "support/touches.hpp"

namespace velotap {
namespace {

using test::row;
using test::touch;

std::optional<DiagnosticsMode> mode(std::vector<const char*> arguments) {
  return diagnosticsMode(static_cast<int>(arguments.size()), arguments.data());
}

TEST(DiagnosticsMode, EachFlagIsFoundAnywhere) {
  EXPECT_EQ(mode({"velotap", "--devices"}), DiagnosticsMode::devices);
  EXPECT_EQ(mode({"velotap", "x", "--watch", "y"}), DiagnosticsMode::watch);
  EXPECT_EQ(mode({"velotap", "--calibrate"}), DiagnosticsMode::calibrate);
  EXPECT_EQ(mode({"--devices"}), DiagnosticsMode::devices) << "the program's path counts too";
}

TEST(DiagnosticsMode, OnlyWholeFlagsCount) {
  for (const char* argument : {"--Devices", "--devices=1", "-devices", "devices", "--watc",
                               "--watching", "--CALIBRATE", "--calibrate ", ""}) {
    EXPECT_EQ(mode({"velotap", argument}), std::nullopt) << argument;
  }
  EXPECT_EQ(mode({}), std::nullopt);
}

TEST(DiagnosticsMode, WatchingWinsThenCalibrating) {
  EXPECT_EQ(mode({"velotap", "--calibrate", "--devices", "--watch"}), DiagnosticsMode::watch);
  EXPECT_EQ(mode({"velotap", "--devices", "--calibrate"}), DiagnosticsMode::calibrate);
}

TEST(WatchLine, TellsTheFirstContactOfTheFrame) {
  auto frame = row(3);
  frame[0].stage = 3;
  frame[0].position = {.x = 0.1236F, .y = 0.9F};
  frame[0].size = 1.256F;
  frame[0].pressure = 0;
  EXPECT_EQ(watchLine(frame.data(), 3),
            "fingers=3  touch0: stage=3 pos=(0.124, 0.900) size=1.26 pressure=0.00");
}

TEST(WatchLine, CountIsTheFramesEvenWhenItIsAbsurd) {
  const auto frame = row(1);
  const auto line = watchLine(frame.data(), std::numeric_limits<std::int32_t>::max());
  ASSERT_TRUE(line);
  EXPECT_TRUE(line->starts_with("fingers=2147483647  touch0: stage=4 "));
}

TEST(WatchLine, AnyNumberIsPrintedInFull) {
  auto frame = row(1);
  const float largest = std::numeric_limits<float>::max();
  frame[0].position = {.x = -largest, .y = -largest};
  frame[0].size = std::numeric_limits<float>::quiet_NaN();
  frame[0].pressure = std::numeric_limits<float>::infinity();
  const auto line = watchLine(frame.data(), 1);
  ASSERT_TRUE(line);
  EXPECT_NE(line->find("pos=(-340282346638528859811704183484516925440.000, "), std::string::npos);
  EXPECT_TRUE(line->ends_with("size=nan pressure=inf")) << *line;
}

TEST(WatchLine, FrameWithoutContactsHasNone) {
  const auto frame = row(1);
  EXPECT_EQ(watchLine(nullptr, 3), std::nullopt);
  EXPECT_EQ(watchLine(frame.data(), 0), std::nullopt);
  EXPECT_EQ(watchLine(frame.data(), -1), std::nullopt);
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST(CalibrationDump, OneContactIsTwentyFourWords) {
  const auto frame = row(1);
  const auto dump = calibrationDump(frame.data(), 1);
  ASSERT_TRUE(dump);
  const auto lines = linesOf(*dump);
  ASSERT_EQ(lines.size(), 3U + 24U);
  EXPECT_EQ(lines[0], "");
  EXPECT_EQ(lines[1], "=== frame: numTouches=1, assumed stride 96B, dumping 96B ===");
  EXPECT_EQ(lines[2], "offset |      int32 |      float");
  EXPECT_EQ(lines[3].substr(0, 9), "     0 | ");
  EXPECT_TRUE(lines[3].ends_with("  <- touch[0]"));
  EXPECT_EQ(lines[3 + 4], "    16 |          1 |     0.0000") << "the identifier";
  EXPECT_EQ(lines[3 + 5], "    20 |          4 |     0.0000") << "the stage";
  EXPECT_EQ(lines[3 + 9], "    36 | 1056964608 |     0.5000") << "y, as both";
  EXPECT_EQ(lines[3 + 23], "    92 | 1065353216 |     1.0000") << "the density, the last word";
}

TEST(CalibrationDump, WordsAreSigned) {
  auto frame = row(1);
  frame[0].identifier = -2;
  frame[0].position.x = -1.5F;
  const auto lines = linesOf(*calibrationDump(frame.data(), 1));
  EXPECT_EQ(lines[3 + 4].substr(0, 22), "    16 |         -2 | ");
  EXPECT_EQ(lines[3 + 8],
            "    32 | " + std::to_string(std::bit_cast<std::int32_t>(-1.5F)) + " |    -1.5000");
}

TEST(CalibrationDump, AtMostThreeContactsAreDumpedAndTheirStartsMarked) {
  for (const int count : {2, 3, 4, 5}) {
    const auto frame = row(count);
    const auto dump = calibrationDump(frame.data(), count);
    ASSERT_TRUE(dump);
    const auto lines = linesOf(*dump);
    const auto dumped = static_cast<std::size_t>(std::min(count, 3));
    EXPECT_EQ(lines[1], "=== frame: numTouches=" + std::to_string(count) +
                            ", assumed stride 96B, dumping " + std::to_string(dumped * 96) +
                            "B ===");
    ASSERT_EQ(lines.size(), 3 + dumped * 24);
    for (std::size_t i = 3; i < lines.size(); ++i) {
      const std::size_t offset = (i - 3) * 4;
      const std::string mark = "  <- touch[" + std::to_string(offset / 96) + "]";
      EXPECT_EQ(lines[i].ends_with(mark), offset % 96 == 0) << lines[i];
      EXPECT_EQ(lines[i].find("<-") != std::string::npos, offset % 96 == 0) << lines[i];
    }
  }
}

TEST(CalibrationDump, FrameWithoutContactsHasNone) {
  const auto frame = row(1);
  EXPECT_EQ(calibrationDump(nullptr, 2), std::nullopt);
  EXPECT_EQ(calibrationDump(frame.data(), 0), std::nullopt);
  EXPECT_EQ(calibrationDump(frame.data(), -5), std::nullopt);
}

TEST(DumpThrottle, FramesEveryHalfSecondAreDumpedEveryOneAndAHalf) {
  DumpThrottle throttle;
  std::vector<double> dumped;
  for (int i = 0; i <= 7; ++i) {
    if (throttle.admit(0.5 * i)) dumped.push_back(0.5 * i);
  }
  EXPECT_EQ(dumped, (std::vector<double>{0, 1.5, 3}));
}

TEST(DumpThrottle, OneSecondIsTooSoonAndTheLeastBitMoreIsNot) {
  DumpThrottle throttle;
  EXPECT_TRUE(throttle.admit(4)) << "the first always";
  EXPECT_FALSE(throttle.admit(4));
  EXPECT_FALSE(throttle.admit(5));
  EXPECT_TRUE(throttle.admit(std::nextafter(5.0, 6.0)));
}

class RunDiagnostics : public testing::Test {
 protected:
  int run(
      DiagnosticsMode mode, const std::function<void()>& loop = [] {}) {
    testing::internal::CaptureStdout();
    const int status = runDiagnostics(
        mode, {.multitouch = binding, .uptime = [this] { return now; }, .runMainLoop = loop});
    output = testing::internal::GetCapturedStdout();
    return status;
  }

  test::FakeMultitouch library;
  MT binding{library};
  double now = 0;
  std::string output;
};

constexpr const char* kTwoDevices =
    "multitouch devices: 2\n"
    "  device 0: familyID=128 builtIn=true\n"
    "  device 1: familyID=112 builtIn=false\n";

TEST_F(RunDiagnostics, WithoutALibraryThereIsAnError) {
  library.libraryMissing = true;
  for (const auto mode :
       {DiagnosticsMode::devices, DiagnosticsMode::watch, DiagnosticsMode::calibrate}) {
    EXPECT_EQ(run(mode), 1);
    EXPECT_EQ(output, "ERROR: MultitouchSupport.framework unavailable\n");
  }
}

TEST_F(RunDiagnostics, ListsDevicesInTheirOrder) {
  library.add("pad", 128).builtIn = true;
  library.add("mouse", 112);
  library.nullEntries = true;
  EXPECT_EQ(run(DiagnosticsMode::devices), 0);
  EXPECT_EQ(output, kTwoDevices);
  EXPECT_TRUE(library.takeCalls().empty()) << "listing starts nothing";
}

TEST_F(RunDiagnostics, NoDevicesAreNoErrorForAListingOnly) {
  EXPECT_EQ(run(DiagnosticsMode::devices), 0);
  EXPECT_EQ(output, "multitouch devices: 0\n");
  for (const auto mode : {DiagnosticsMode::watch, DiagnosticsMode::calibrate}) {
    EXPECT_EQ(run(mode), 1);
    EXPECT_EQ(output, "multitouch devices: 0\nERROR: no multitouch devices found\n");
  }
}

TEST_F(RunDiagnostics, WatchesEveryFrameOfEveryDeviceThatStarts) {
  auto& pad = library.add("pad", 128);
  pad.builtIn = true;
  library.add("mouse", 112).starts = false;
  const int status = run(DiagnosticsMode::watch, [&] {
    library.deliver(pad, row(1));
    library.deliver(pad, nullptr, 2);
    library.deliver(pad, row(0));
    library.deliver(pad, row(2));
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(output, std::string(kTwoDevices) +
                        "watching touch frames — touch a device surface, Ctrl-C to stop\n"
                        "fingers=1  touch0: stage=4 pos=(0.300, 0.500) size=1.00 pressure=-0.00\n"
                        "fingers=2  touch0: stage=4 pos=(0.300, 0.500) size=1.00 pressure=-0.00\n");
  EXPECT_EQ(library.takeCalls(),
            (std::vector<std::string>{"register pad", "start pad", "register mouse", "start mouse",
                                      "unregister mouse", "release mouse"}));
}

TEST_F(RunDiagnostics, CalibratesAtMostOnceASecond) {
  auto& pad = library.add("pad", 128);
  pad.builtIn = true;
  library.add("mouse", 112);
  const auto frame = row(2);
  const int status = run(DiagnosticsMode::calibrate, [&] {
    for (const double at : {10.0, 10.5, 11.0, 11.5}) {
      now = at;
      library.deliver(pad, nullptr, 2);  // nothing to dump, so it must not use the turn up
      library.deliver(pad, frame);
    }
  });
  EXPECT_EQ(status, 0);
  const std::string dump = *calibrationDump(frame.data(), 2) + "\n";
  EXPECT_EQ(output, std::string(kTwoDevices) +
                        "CALIBRATION: rest two STILL fingers on the surface — one left-middle, one "
                        "right-middle.\nDumps raw frame bytes once per second. Ctrl-C to stop.\n" +
                        dump + dump);
}

TEST_F(RunDiagnostics, NothingThatStartsIsAnError) {
  library.add("pad", 128).registers = false;
  library.add("mouse", 112).starts = false;
  for (const auto mode : {DiagnosticsMode::watch, DiagnosticsMode::calibrate}) {
    EXPECT_EQ(run(mode, [] { FAIL() << "there is nothing to wait for"; }), 1);
    EXPECT_TRUE(output.ends_with("\nERROR: no multitouch device callback could be started\n"));
  }
}

}  // namespace
}  // namespace velotap
