#include "shell/crash_marker.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "shell/forked.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

using test::ChildEnd;
using test::runForked;

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class CrashMarkerTest : public ::testing::Test {
 protected:
  ChildEnd crash(int signal) const {
    return runForked([this, signal] {
      MCInstallCrashSignalHandlers(log_.c_str());
      raise(signal);
    });
  }
  TemporaryFolder folder_;
  const std::string log_ = (folder_.path() / "crash.log").string();
};

class FatalSignal : public CrashMarkerTest, public ::testing::WithParamInterface<int> {};

TEST_P(FatalSignal, IsNotedAndEndsTheProcess) {
  const ChildEnd end = crash(GetParam());
  EXPECT_EQ(end.signal, GetParam());
  EXPECT_EQ(contentOf(log_), "Velotap crash: signal " + std::to_string(GetParam()) + "\n");
}

INSTANTIATE_TEST_SUITE_P(All, FatalSignal,
                         ::testing::Values(SIGABRT, SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP),
                         [](const auto& test) { return "Signal" + std::to_string(test.param); });

TEST_F(CrashMarkerTest, HasOneDigitForSignal5AndTwoForSignal11) {
  crash(5);
  crash(11);
  EXPECT_EQ(contentOf(log_), "Velotap crash: signal 5\nVelotap crash: signal 11\n");
}

TEST_F(CrashMarkerTest, WritesItsDigitsByHand) {
  for (const int number : {1, 9, 10, 64}) {
    const auto file = folder_.path() / std::to_string(number);
    runForked([&] {
      std::signal(number, SIG_IGN);
      MCInstallCrashSignalHandlers(file.c_str());
      write_crash_marker(number);
    });
    EXPECT_EQ(contentOf(file), "Velotap crash: signal " + std::to_string(number) + "\n");
  }
}

TEST_F(CrashMarkerTest, LeavesTheFileEmptyUntilThen) {
  EXPECT_EQ(runForked([this] { MCInstallCrashSignalHandlers(log_.c_str()); }).status, 0);
  EXPECT_TRUE(std::filesystem::is_regular_file(log_));
  EXPECT_EQ(contentOf(log_), "");
}

TEST_F(CrashMarkerTest, MakesTheFileForTheUserAlone) {
  runForked([this] {
    umask(0);
    MCInstallCrashSignalHandlers(log_.c_str());
  });
  struct stat entry = {};
  ASSERT_EQ(stat(log_.c_str(), &entry), 0);
  EXPECT_EQ(entry.st_mode & 07777U, 0600U);
}

TEST_F(CrashMarkerTest, OtherSignalsAreLeftAlone) {
  EXPECT_EQ(crash(SIGTERM).signal, SIGTERM);
  EXPECT_EQ(contentOf(log_), "");
}

TEST_F(CrashMarkerTest, AKilledProcessLeavesTheFileEmpty) {
  EXPECT_EQ(crash(SIGKILL).signal, SIGKILL);
  EXPECT_EQ(contentOf(log_), "");
}

TEST_F(CrashMarkerTest, WithoutAFileTheProcessStillEndsWithItsSignal) {
  const ChildEnd end = runForked([this] {
    MCInstallCrashSignalHandlers((folder_.path() / "missing" / "crash.log").c_str());
    if (crash_log_fd >= 0) _exit(1);
    raise(SIGSEGV);
  });
  EXPECT_EQ(end.signal, SIGSEGV);
}

TEST_F(CrashMarkerTest, AFullDiskDoesNotKeepTheProcessFromEnding) {
  const ChildEnd end = runForked([] {
    MCInstallCrashSignalHandlers("/dev/full");
    if (crash_log_fd < 0) _exit(1);
    raise(SIGABRT);
  });
  EXPECT_EQ(end.signal, SIGABRT);
}

TEST_F(CrashMarkerTest, InstallingAgainMovesToTheNewFile) {
  const std::string second = (folder_.path() / "second.log").string();
  const ChildEnd end = runForked([&] {
    MCInstallCrashSignalHandlers(log_.c_str());
    const int first = crash_log_fd;
    MCInstallCrashSignalHandlers(second.c_str());
    // The lowest free number: the first file was closed before the second was opened.
    if (crash_log_fd != first) _exit(1);
    raise(SIGBUS);
  });
  EXPECT_EQ(end.signal, SIGBUS);
  EXPECT_EQ(contentOf(log_), "");
  EXPECT_EQ(contentOf(second), "Velotap crash: signal 7\n");
}

TEST_F(CrashMarkerTest, InstallsTheHandlerForOneSignalEach) {
  const ChildEnd end = runForked([this] {
    MCInstallCrashSignalHandlers(log_.c_str());
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP}) {
      struct sigaction action = {};
      sigaction(signal, nullptr, &action);
      sigset_t none;
      sigemptyset(&none);
      bool masked = false;
      for (int other = 1; other < 32; ++other) {
        masked = masked || sigismember(&action.sa_mask, other) == 1;
      }
      const bool resets = (static_cast<unsigned>(action.sa_flags) & SA_RESETHAND) != 0;
      if (action.sa_handler != &write_crash_marker || !resets || masked) _exit(signal);
    }
  });
  EXPECT_EQ(end.status, 0);
}

TEST_F(CrashMarkerTest, AnyThreadMayFail) {
  const ChildEnd end = runForked([this] {
    MCInstallCrashSignalHandlers(log_.c_str());
    std::thread([] { raise(SIGFPE); }).join();
  });
  EXPECT_EQ(end.signal, SIGFPE);
  EXPECT_EQ(contentOf(log_), "Velotap crash: signal 8\n");
}

}  // namespace
}  // namespace velotap
