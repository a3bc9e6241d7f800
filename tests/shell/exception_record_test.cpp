#include "shell/exception_record.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>

#include "shell/crash_marker.hpp"
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

std::vector<std::string> linesOf(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

TEST(ExceptionRecord, HasNameReasonAndStack) {
  EXPECT_EQ(exceptionRecord("NSRangeException", "index 5 beyond bounds", {"0 one", "1 two"}),
            "Uncaught exception: NSRangeException\nReason: index 5 beyond bounds\n0 one\n1 two");
}

TEST(ExceptionRecord, ADashStandsForNoReason) {
  EXPECT_EQ(exceptionRecord("std::terminate", "", {}),
            "Uncaught exception: std::terminate\nReason: -\n");
}

class RecorderTest : public ::testing::Test {
 protected:
  ChildEnd run(const std::function<void()>& failing) const {
    return runForked([&] {
      installExceptionRecorder(log_.string());
      MCInstallCrashSignalHandlers(log_.c_str());
      std::thread(failing).join();  // nothing of the test program catches there
    });
  }
  TemporaryFolder folder_;
  const std::filesystem::path log_ = folder_.path() / "crash-x.log";
};

TEST_F(RecorderTest, WritesTheExceptionInPlaceOfTheEmptyLog) {
  const ChildEnd end = run([] { throw std::runtime_error("the disk is on fire"); });
  EXPECT_EQ(end.signal, SIGABRT);
  const auto lines = linesOf(log_);
  ASSERT_GE(lines.size(), 3U);
  EXPECT_EQ(lines[0], "Uncaught exception: std::runtime_error");
  EXPECT_EQ(lines[1], "Reason: the disk is on fire");
}

TEST_F(RecorderTest, ThrownTextIsAReason) {
  run([] { throw std::string("plain text"); });
  EXPECT_EQ(linesOf(log_)[1], "Reason: plain text");
}

TEST_F(RecorderTest, WhateverIsThrownHasAName) {
  run([] { throw 42; });
  EXPECT_EQ(linesOf(log_)[0], "Uncaught exception: int");
  EXPECT_EQ(linesOf(log_)[1], "Reason: -");
}

TEST_F(RecorderTest, AnEndWithoutAnExceptionIsNamedToo) {
  run([] { std::terminate(); });
  EXPECT_EQ(linesOf(log_)[0], "Uncaught exception: std::terminate");
  EXPECT_EQ(linesOf(log_)[1], "Reason: -");
}

TEST_F(RecorderTest, IsForTheUserAloneAndLeavesNothingBeside) {
  run([] {
    umask(0);
    throw std::runtime_error("x");
  });
  struct stat entry = {};
  ASSERT_EQ(stat(log_.c_str(), &entry), 0);
  EXPECT_EQ(entry.st_mode & 07777U, 0600U);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
}

TEST_F(RecorderTest, AFullDiskLeavesTheLogWithTheMarkerOfTheAbort) {
  const ChildEnd end = run([this] {
    // Files of at most 40 bytes: enough for the marker, too little for a record with a stack.
    const rlimit little{40, 40};
    setrlimit(RLIMIT_FSIZE, &little);
    std::signal(SIGXFSZ, SIG_IGN);
    throw std::runtime_error("a reason that is too long to be written down in forty bytes");
  });
  EXPECT_EQ(end.signal, SIGABRT);
  EXPECT_EQ(contentOf(log_), "Velotap crash: signal 6\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
}

TEST_F(RecorderTest, WithoutAFolderTheProcessStillAborts) {
  const ChildEnd end = runForked([this] {
    installExceptionRecorder((folder_.path() / "missing" / "crash.log").string());
    std::thread([] { throw 1; }).join();
  });
  EXPECT_EQ(end.signal, SIGABRT);
}

TEST_F(RecorderTest, AReasonThatThrowsEndsTheProcessWithoutARecord) {
  struct Vicious : std::exception {
    [[nodiscard]] const char* what() const noexcept override { std::terminate(); }
  };
  EXPECT_EQ(run([] { throw Vicious(); }).signal, SIGABRT);
  EXPECT_EQ(contentOf(log_), "Velotap crash: signal 6\n");
}

TEST(UnfinishedRecords, OfKilledProcessesAreRemovedAndNothingElse) {
  const TemporaryFolder folder;
  for (const char* name : {".crash-v1-2-3.log.unfinished", "crash-v1-2-3.log", ".crash-note",
                           "crash-x.unfinished", ".other.unfinished"}) {
    folder.replace(name, "x");
  }
  removeUnfinishedRecords(folder.path().string());
  EXPECT_FALSE(std::filesystem::exists(folder.path() / ".crash-v1-2-3.log.unfinished"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 4);
  removeUnfinishedRecords((folder.path() / "missing").string());
}

}  // namespace
}  // namespace velotap
