// The background program after a bad end: whatever ended it, the next start works, nothing is lost,
// and a crash is told of as long as its report is there.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "child_program.hpp"
#include "support/child_process.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using test::ChildProgram;

class RecoveryTest : public testing::Test {
 protected:
  RecoveryTest() {
    std::string pattern = (fs::temp_directory_path() / "velotap-recovery-XXXXXX").string();
    home_ = mkdtemp(pattern.data());
    fs::create_directory(home_ / "run");
    environment_ = {
        {"HOME", home_.string()},
        {"PATH", "/usr/bin:/bin"},
        {"XDG_RUNTIME_DIR", (home_ / "run").string()},
        {"DBUS_SESSION_BUS_ADDRESS", daemon_.line()},
        {"VELOTAP_MULTITOUCH_LIBRARY", std::string(VELOTAP_PROVIDERS) + "/two_devices.so"}};
  }
  ~RecoveryTest() override { fs::remove_all(home_); }

  /// Starts the program again until the one that runs answers: its launch is over then.
  void awaitLaunch() {
    std::string said;
    while (said.find("it was told") == std::string::npos) {
      ChildProgram second(VELOTAP_PROGRAM, {}, environment_);
      static_cast<void>(second.readAll());
      said = second.readErrors();
      ASSERT_NE(said.find("already running"), std::string::npos) << said;
      ASSERT_EQ(second.await().status, 0);
    }
  }
  ChildProgram::End runAndEndWith(int signal) {
    ChildProgram program(VELOTAP_PROGRAM, {}, environment_);
    lockTaken();
    awaitLaunch();
    program.signal(signal);
    static_cast<void>(program.readAll());
    errors_ = program.readErrors();
    return program.await();
  }
  /// Until the program holds its lock, another one would be first. Looking must not lock.
  void lockTaken() const {
    struct stat file = {};
    while (stat((home_ / "run" / "velotap.lock").c_str(), &file) != 0) {
    }
    const std::string inode = ":" + std::to_string(file.st_ino) + " ";
    std::string held;
    do {
      std::ifstream in("/proc/locks");
      held.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    } while (held.find(inode) == std::string::npos);
  }
  [[nodiscard]] std::vector<std::string> reports() const {
    std::vector<std::string> contents;
    for (const auto& entry : fs::directory_iterator(crashes_())) {
      std::ifstream in(entry.path(), std::ios::binary);
      contents.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return contents;
  }
  [[nodiscard]] fs::path crashes_() const { return home_ / ".local/state/Velotap/Crashes"; }

  ChildProcess daemon_{{"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"},
                       3};
  fs::path home_;
  std::map<std::string, std::string> environment_;
  std::string errors_;
};

constexpr const char* kCrashed = "Velotap crashed last time";

class CrashTest : public RecoveryTest, public testing::WithParamInterface<int> {};

TEST_P(CrashTest, LeavesAReportThatTheNextStartTellsOf) {
  EXPECT_EQ(runAndEndWith(GetParam()).signal, GetParam());
  const std::string marker = "Velotap crash: signal " + std::to_string(GetParam()) + "\n";
  EXPECT_EQ(reports(), std::vector<std::string>{marker});
  struct stat folder = {};
  ASSERT_EQ(stat(crashes_().c_str(), &folder), 0);
  EXPECT_EQ(folder.st_mode & 07777U, 0700U);

  EXPECT_EQ(runAndEndWith(SIGTERM).status, 0);
  const auto first = errors_.find(kCrashed);
  EXPECT_NE(first, std::string::npos) << errors_;
  EXPECT_EQ(errors_.find(kCrashed, first + 1), std::string::npos) << "once";
}
INSTANTIATE_TEST_SUITE_P(Signals, CrashTest,
                         testing::Values(SIGABRT, SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP),
                         [](const auto& signal) {
                           return "signal" + std::to_string(signal.param);
                         });

TEST_F(RecoveryTest, AKilledProgramStartsAgainAndTellsOfNothing) {
  EXPECT_EQ(runAndEndWith(SIGKILL).signal, SIGKILL);
  EXPECT_EQ(runAndEndWith(SIGTERM).status, 0);
  EXPECT_EQ(errors_.find(kCrashed), std::string::npos) << errors_;
  EXPECT_EQ(reports().size(), 1U) << "its own, empty; that of the killed one is gone";
}

TEST_F(RecoveryTest, SettingsSurviveEveryEnd) {
  const fs::path settings = home_ / ".config/velotap/app.norwend.velotap.json";
  fs::create_directories(settings.parent_path());
  const std::string text =
      "{\"maxTapDurationMs\": 321, \"lowercaseIdentityMigrationCompleted\": true}";
  std::ofstream(settings) << text;
  for (const int signal : {SIGKILL, SIGSEGV, SIGTERM}) {
    runAndEndWith(signal);
    std::ifstream in(settings);
    const std::string now{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    EXPECT_NE(now.find("321"), std::string::npos) << now;
  }
}

TEST_F(RecoveryTest, AFolderThatCannotBeMadeKeepsNothingFromStarting) {
  fs::create_directories(home_ / ".local");
  std::ofstream(home_ / ".local" / "state") << "a file where the folder should be";
  EXPECT_EQ(runAndEndWith(SIGTERM).status, 0);
  EXPECT_EQ(runAndEndWith(SIGSEGV).signal, SIGSEGV);
  EXPECT_EQ(runAndEndWith(SIGTERM).status, 0);
}

}  // namespace
}  // namespace velotap
