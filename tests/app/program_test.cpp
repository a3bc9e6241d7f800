// The program as people start it: its arguments, what it prints, how it ends.

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "child_program.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using test::ChildProgram;

constexpr const char* kUnavailable = "ERROR: MultitouchSupport.framework unavailable\n";
constexpr const char* kTwoDevices =
    "multitouch devices: 2\n"
    "  device 0: familyID=128 builtIn=true\n"
    "  device 1: familyID=112 builtIn=false\n";

class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    std::string pattern = (fs::temp_directory_path() / "velotap-program-XXXXXX").string();
    home = mkdtemp(pattern.data());
    // No screen, no session bus: nothing of whoever runs the tests is reached.
    environment = {{"HOME", home.string()}, {"PATH", "/usr/bin:/bin"}};
  }
  ~ProgramTest() override { fs::remove_all(home); }

  void useProvider(const std::string& name) {
    environment["VELOTAP_MULTITOUCH_LIBRARY"] = std::string(VELOTAP_PROVIDERS) + "/" + name + ".so";
  }
  // Runs the program to its end.
  void run(const std::vector<std::string>& arguments) {
    ChildProgram program(VELOTAP_PROGRAM, arguments, environment);
    output = program.readAll();
    errors = program.readErrors();
    end = program.await();
  }

  fs::path home;
  std::map<std::string, std::string> environment;
  std::string output;
  std::string errors;
  ChildProgram::End end;
};

TEST_F(ProgramTest, LibraryThatCannotBeOpenedIsNamedUnavailable) {
  useProvider("there_is_none");
  for (const char* flag : {"--devices", "--watch", "--calibrate"}) {
    run({flag});
    EXPECT_EQ(output, kUnavailable);
    EXPECT_EQ(end.status, 1);
  }
}

TEST_F(ProgramTest, EveryFunctionOfTheLibraryIsNeeded) {
  for (const char* symbol :
       {"MTDeviceCreateList", "MTRegisterContactFrameCallback", "MTUnregisterContactFrameCallback",
        "MTDeviceStart", "MTDeviceStop", "MTDeviceRelease", "MTDeviceGetFamilyID"}) {
    useProvider(std::string("without_") + symbol);
    run({"--devices"});
    EXPECT_EQ(output, kUnavailable) << symbol;
    EXPECT_EQ(end.status, 1) << symbol;
  }
}

TEST_F(ProgramTest, WithoutTheBuiltInFunctionNoDeviceIsBuiltIn) {
  useProvider("without_MTDeviceIsBuiltIn");
  run({"--devices"});
  EXPECT_EQ(output,
            "multitouch devices: 2\n"
            "  device 0: familyID=128 builtIn=false\n"
            "  device 1: familyID=112 builtIn=false\n");
  EXPECT_EQ(end.status, 0);
}

TEST_F(ProgramTest, ListsDevices) {
  for (const char* provider : {"two_devices", "null_entries"}) {
    useProvider(provider);
    run({"--devices"});
    EXPECT_EQ(output, kTwoDevices) << provider;
    EXPECT_EQ(errors, "");
    EXPECT_EQ(end.status, 0);
  }
}

TEST_F(ProgramTest, NoDevicesAreNoErrorForAListingOnly) {
  useProvider("no_devices");
  run({"--devices"});
  EXPECT_EQ(output, "multitouch devices: 0\n");
  EXPECT_EQ(end.status, 0);
  for (const char* flag : {"--watch", "--calibrate"}) {
    run({flag});
    EXPECT_EQ(output, "multitouch devices: 0\nERROR: no multitouch devices found\n");
    EXPECT_EQ(end.status, 1);
  }
}

TEST_F(ProgramTest, DevicesThatDoNotStartAreAnError) {
  for (const char* provider : {"refuses_to_register", "refuses_to_start"}) {
    useProvider(provider);
    for (const char* flag : {"--watch", "--calibrate"}) {
      run({flag});
      EXPECT_TRUE(output.starts_with(kTwoDevices));
      EXPECT_TRUE(output.ends_with("\nERROR: no multitouch device callback could be started\n"));
      EXPECT_EQ(end.status, 1);
    }
  }
}

TEST_F(ProgramTest, WatchesUntilItIsInterrupted) {
  useProvider("delivers_frames");
  ChildProgram program(VELOTAP_PROGRAM, {"--calibrate", "--watch"}, environment);
  EXPECT_EQ(program.readLine(), "multitouch devices: 1");
  EXPECT_EQ(program.readLine(), "  device 0: familyID=128 builtIn=true");
  EXPECT_EQ(program.readLine(), "watching touch frames — touch a device surface, Ctrl-C to stop");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(program.readLine(),
              "fingers=2  touch0: stage=4 pos=(0.250, 0.500) size=1.50 pressure=0.25");
  }
  program.signal(SIGINT);
  EXPECT_EQ(program.await().signal, SIGINT);
}

TEST_F(ProgramTest, CalibratesUntilItIsInterrupted) {
  useProvider("delivers_frames");
  ChildProgram program(VELOTAP_PROGRAM, {"--calibrate"}, environment);
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < 2 + 2 + 3 + 48; ++i) lines.push_back(program.readLine().value_or(""));
  EXPECT_EQ(lines[2],
            "CALIBRATION: rest two STILL fingers on the surface — one left-middle, one "
            "right-middle.");
  EXPECT_EQ(lines[3], "Dumps raw frame bytes once per second. Ctrl-C to stop.");
  EXPECT_EQ(lines[4], "");
  EXPECT_EQ(lines[5], "=== frame: numTouches=2, assumed stride 96B, dumping 192B ===");
  EXPECT_EQ(lines[7], "     0 |          0 |     0.0000  <- touch[0]");
  EXPECT_EQ(lines[7 + 24], "    96 |          0 |     0.0000  <- touch[1]");
  program.signal(SIGINT);
  EXPECT_EQ(program.await().signal, SIGINT);
}

TEST_F(ProgramTest, DiagnosticsTouchNoSettings) {
  useProvider("two_devices");
  run({"--devices"});
  EXPECT_TRUE(fs::is_empty(home));
}

TEST_F(ProgramTest, HelpAndVersionArePrinted) {
  run({"--help"});
  EXPECT_NE(output.find("--calibrate"), std::string::npos);
  EXPECT_EQ(end.status, 0);
  run({"--version"});
  EXPECT_EQ(output, "velotap " VELOTAP_VERSION "\n");
  EXPECT_EQ(end.status, 0);
}

TEST_F(ProgramTest, InTheBackgroundItNeedsTheLibrary) {
  useProvider("without_MTDeviceStop");
  run({});
  EXPECT_EQ(output, "");
  EXPECT_NE(errors.find("without_MTDeviceStop.so is unavailable"), std::string::npos) << errors;
  EXPECT_EQ(end.status, 1);
}

class BackgroundTest : public ProgramTest, public testing::WithParamInterface<int> {};

TEST_P(BackgroundTest, RunsUntilItIsToldToEndAndEndsInOrder) {
  useProvider("delivers_frames");
  environment["VELOTAP_DEBUG"] = "1";
  ChildProgram program(VELOTAP_PROGRAM, {}, environment);
  const auto line = program.readLine();  // from here on it takes signals
  ASSERT_TRUE(line);
  EXPECT_TRUE(line->starts_with("[Velotap] ")) << *line;
  program.signal(GetParam());
  const std::string rest = program.readAll();
  const std::string said = program.readErrors();
  end = program.await();
  EXPECT_EQ(end.status, 0) << rest << said;
  EXPECT_EQ(end.signal, 0) << rest << said;
}

INSTANTIATE_TEST_SUITE_P(Signals, BackgroundTest, testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& signal) {
                           return "signal" + std::to_string(signal.param);
                         });

TEST_F(ProgramTest, UnknownOptionIsNamedOnceAndTheProgramStarts) {
  useProvider("two_devices");
  environment["VELOTAP_DEBUG"] = "1";
  ChildProgram program(VELOTAP_PROGRAM, {"--Devices"}, environment);
  const auto line = program.readLine();
  ASSERT_TRUE(line);
  EXPECT_TRUE(line->starts_with("[Velotap] ")) << *line;
  program.signal(SIGTERM);
  static_cast<void>(program.readAll());
  const std::string said = program.readErrors();
  EXPECT_TRUE(said.starts_with("velotap: unknown option --Devices ignored (see --help)\n")) << said;
  EXPECT_EQ(said.find("--Devices"), said.rfind("--Devices"));
  EXPECT_EQ(program.await().status, 0);
}

TEST_F(ProgramTest, ReaderOfItsDiagnosticLinesMayGo) {
  useProvider("two_devices");
  environment["VELOTAP_DEBUG"] = "1";
  ChildProgram program(VELOTAP_PROGRAM, {}, environment);
  ASSERT_TRUE(program.readLine());
  program.closeOutput();
  program.signal(SIGTERM);  // stopping prints, or may
  static_cast<void>(program.readErrors());
  EXPECT_EQ(program.await().status, 0);
}

}  // namespace
}  // namespace velotap
