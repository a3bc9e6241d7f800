#include "shell/crash_reporter.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

#include "shell/forked.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using Disposition = CrashReporter::ReportDisposition;
using test::runForked;
using Lines = std::vector<std::string>;

constexpr int kEmail = 0;
constexpr int kDelete = 1;
constexpr int kLater = 2;

unsigned modeOf(const fs::path& path) {
  struct stat entry = {};
  return stat(path.c_str(), &entry) == 0 ? entry.st_mode & 07777U : 0U;
}

class CrashReporterTest : public ::testing::Test {
 protected:
  fs::path log(const std::string& name, const std::string& content) const {
    fs::create_directories(crashes_);
    std::ofstream(crashes_ / name, std::ios::binary) << content;
    return crashes_ / name;
  }
  fs::path logOfSize(const std::string& name, std::uintmax_t size) const {
    log(name, "x");
    fs::resize_file(crashes_ / name, size);
    return crashes_ / name;
  }
  Lines names() const {
    Lines all;
    for (const auto& entry : fs::directory_iterator(crashes_)) {
      all.push_back(entry.path().filename().string());
    }
    std::sort(all.begin(), all.end());
    return all;
  }
  Disposition judge(const fs::path& path) const {
    return CrashReporter::reportDisposition(path.string(), "/elsewhere/crash-now.log");
  }

  /// The reporter of one launch.
  CrashReporter reporter(const std::string& version = "1.2", const std::string& uuid = "U-1") {
    return CrashReporter(
        {.crashDir = crashes_.string(),
         .version = version,
         .supportAddress = "help@example.com",
         .now = [] { return std::chrono::system_clock::from_time_t(1700000000); },
         .uuid = [uuid] { return uuid; },
         .ask =
             [this](const AlertRequest& request) {
               asked_.push_back(request);
               return answer_;
             },
         .openUrl =
             [this](const std::string& url, std::function<void(bool)> outcome) {
               opened_.push_back(url);
               if (mailOpensAtOnce_) return outcome(true);
               outcome_ = std::move(outcome);
             },
         .localize = [](std::string_view key) { return "«" + std::string(key) + "»"; }});
  }

  TemporaryFolder folder_;
  const fs::path crashes_ = folder_.path() / "state" / "Velotap" / "Crashes";
  int answer_ = kLater;
  bool mailOpensAtOnce_ = true;
  std::function<void(bool)> outcome_;
  std::vector<AlertRequest> asked_;
  Lines opened_;
};

TEST_F(CrashReporterTest, NamesTheLogAfterVersionTimeAndUuid) {
  using std::chrono::system_clock;
  const auto date = system_clock::from_time_t(1700000000);
  EXPECT_EQ(CrashReporter::logName("1.2", date, "ABC"), "crash-v1.2-1700000000-ABC.log");
  EXPECT_EQ(CrashReporter::logName("", date, "ABC"), "crash-vdev-1700000000-ABC.log");
  EXPECT_EQ(CrashReporter::logName("1", date + std::chrono::milliseconds(999), "A"),
            "crash-v1-1700000000-A.log");
  EXPECT_EQ(
      CrashReporter::logName("1", system_clock::from_time_t(0) - std::chrono::milliseconds(1), "A"),
      "crash-v1-0-A.log");
}

TEST_F(CrashReporterTest, TheLogsNameIsSettledOnce) {
  int calls = 0;
  CrashReporter reporter({.crashDir = "/x",
                          .version = "1",
                          .supportAddress = "",
                          .now = [] { return std::chrono::system_clock::from_time_t(5); },
                          .uuid = [&] { return std::to_string(++calls); },
                          .ask = {},
                          .openUrl = {},
                          .localize = {}});
  EXPECT_EQ(reporter.logPath(), "/x/crash-v1-5-1.log");
  EXPECT_EQ(reporter.logPath(), "/x/crash-v1-5-1.log");
}

TEST_F(CrashReporterTest, JudgesBySize) {
  EXPECT_EQ(judge(logOfSize("crash-0.log", 0)), Disposition::empty);
  EXPECT_EQ(judge(logOfSize("crash-1.log", 1)), Disposition::offer);
  EXPECT_EQ(judge(logOfSize("crash-2.log", 1'048'575)), Disposition::offer);
  EXPECT_EQ(judge(logOfSize("crash-3.log", 1'048'576)), Disposition::offer);
  EXPECT_EQ(judge(logOfSize("crash-4.log", 1'048'577)), Disposition::oversized);
}

TEST_F(CrashReporterTest, JudgesNothingButItsOwnKindOfFile) {
  const fs::path good = log("crash-a.log", "x");
  EXPECT_EQ(judge(good), Disposition::offer);
  EXPECT_EQ(judge(log("crash-.log", "x")), Disposition::offer);
  EXPECT_EQ(judge(log("crash-a.txt", "x")), Disposition::skip);
  EXPECT_EQ(judge(log("crash-a.LOG", "x")), Disposition::skip);
  EXPECT_EQ(judge(log("crash-a.log.old", "x")), Disposition::skip);
  EXPECT_EQ(judge(log("crash-log", "x")), Disposition::skip);
  EXPECT_EQ(judge(log("Crash-a.log", "x")), Disposition::skip);
  EXPECT_EQ(judge(log("acrash-a.log", "x")), Disposition::skip);
  EXPECT_EQ(judge(crashes_ / "crash-missing.log"), Disposition::skip);
  fs::create_symlink(good, crashes_ / "crash-link.log");
  EXPECT_EQ(judge(crashes_ / "crash-link.log"), Disposition::skip);
  fs::create_directory(crashes_ / "crash-folder.log");
  EXPECT_EQ(judge(crashes_ / "crash-folder.log"), Disposition::skip);
  ASSERT_EQ(mkfifo((crashes_ / "crash-pipe.log").c_str(), 0600), 0);
  EXPECT_EQ(judge(crashes_ / "crash-pipe.log"), Disposition::skip);
}

TEST_F(CrashReporterTest, LeavesThisRunsLogAlone) {
  const fs::path current = log("crash-now.log", "already something");
  EXPECT_EQ(CrashReporter::reportDisposition(current.string(), current.string()),
            Disposition::skip);
}

TEST_F(CrashReporterTest, ReadsTheFirstReportThatCanBeRead) {
  const fs::path a = log("a", "first");
  const fs::path b = log("b", "second");
  const auto read = [](const std::vector<fs::path>& files) {
    std::vector<std::string> paths;
    for (const auto& file : files) paths.push_back(file.string());
    return CrashReporter::firstReadableReport(paths);
  };
  EXPECT_FALSE(read({}));
  EXPECT_FALSE(read({crashes_ / "missing"}));
  EXPECT_EQ(read({crashes_ / "missing", crashes_, b, a})->path, b.string());
  EXPECT_EQ(read({a, b})->preview, "first");
}

TEST_F(CrashReporterTest, ShowsAtMost4000Bytes) {
  const auto preview = [this](std::size_t length) {
    const fs::path file = log("a", std::string(length, 'x'));
    return CrashReporter::firstReadableReport({file.string()})->preview.size();
  };
  EXPECT_EQ(preview(3999), 3999U);
  EXPECT_EQ(preview(4000), 4000U);
  EXPECT_EQ(preview(4001), 4000U);
}

TEST_F(CrashReporterTest, ShowsBrokenTextAsText) {
  const fs::path file = log("a", std::string(3998, 'x') + "€");
  EXPECT_EQ(CrashReporter::firstReadableReport({file.string()})->preview,
            std::string(3998, 'x') + "\uFFFD");
}

TEST_F(CrashReporterTest, AsksInTheWordsOfTheTables) {
  log("crash-a.log", "x");
  reporter().offerPendingReports();
  ASSERT_EQ(asked_.size(), 1U);
  EXPECT_EQ(asked_[0].message, "«Velotap crashed last time»");
  EXPECT_EQ(asked_[0].informativeText, "«crash.report.body»");
  EXPECT_EQ(asked_[0].buttons, (Lines{"«Email Report»", "«Delete»", "«Later»"}));
}

TEST_F(CrashReporterTest, LaterKeepsTheReportAndItIsOfferedAgain) {
  log("crash-a.log", "x");
  reporter().offerPendingReports();
  EXPECT_EQ(names(), Lines{"crash-a.log"});
  reporter().offerPendingReports();
  EXPECT_EQ(asked_.size(), 2U);
  EXPECT_EQ(opened_, Lines{});
}

TEST_F(CrashReporterTest, DeleteRemovesThatReportAlone) {
  log("crash-b.log", "x");
  log("crash-a.log", "x");
  answer_ = kDelete;
  reporter().offerPendingReports();
  EXPECT_EQ(names(), Lines{"crash-b.log"});
  EXPECT_EQ(asked_.size(), 1U);
}

TEST_F(CrashReporterTest, MailsTheReportAndRemovesItOnceAProgramHasIt) {
  log("crash-a.log", "Velotap crash: signal 11\n");
  mailOpensAtOnce_ = false;
  answer_ = kEmail;
  {
    CrashReporter gone = reporter();
    gone.offerPendingReports();
  }
  EXPECT_EQ(opened_, Lines{"mailto:help@example.com?subject=Velotap%20crash%20report"
                           "&body=Velotap%20crash%3A%20signal%2011%0A"});
  EXPECT_EQ(names(), Lines{"crash-a.log"}) << "nobody has it yet";
  outcome_(true);
  EXPECT_EQ(names(), Lines{});
}

TEST_F(CrashReporterTest, KeepsTheReportWhenNoMailProgramOpens) {
  log("crash-a.log", "x");
  mailOpensAtOnce_ = false;
  answer_ = kEmail;
  reporter().offerPendingReports();
  EXPECT_EQ(opened_.size(), 1U);
  outcome_(false);
  EXPECT_EQ(names(), Lines{"crash-a.log"});
}

TEST_F(CrashReporterTest, KeepsTheReportWhenTheProgramEndsBeforeItIsKnown) {
  log("crash-a.log", "x");
  mailOpensAtOnce_ = false;
  answer_ = kEmail;
  reporter().offerPendingReports();
  outcome_ = nullptr;
  answer_ = kLater;
  reporter().offerPendingReports();
  EXPECT_EQ(asked_.size(), 2U) << "it is offered again";
}

TEST_F(CrashReporterTest, OffersThreeReportsAtThreeLaunchesInTheOrderOfTheirNames) {
  log("crash-c.log", "3");
  log("crash-a.log", "1");
  log("crash-b.log", "2");
  answer_ = kEmail;
  for (int launch = 0; launch < 4; ++launch) reporter().offerPendingReports();
  ASSERT_EQ(opened_.size(), 3U);
  EXPECT_TRUE(opened_[0].ends_with("body=1"));
  EXPECT_TRUE(opened_[1].ends_with("body=2"));
  EXPECT_TRUE(opened_[2].ends_with("body=3"));
  EXPECT_EQ(asked_.size(), 3U);
}

TEST_F(CrashReporterTest, TidiesWithoutAsking) {
  logOfSize("crash-empty.log", 0);
  logOfSize("crash-huge.log", 1'048'577);
  log("crash-note.txt", "x");
  log("other.log", "");
  reporter().offerPendingReports();
  EXPECT_EQ(asked_.size(), 0U);
  EXPECT_EQ(names(), (Lines{"crash-note.txt", "other.log"}));
}

TEST_F(CrashReporterTest, NeverTouchesALinkToALog) {
  const fs::path elsewhere = folder_.path() / "precious";
  std::ofstream(elsewhere) << "x";
  fs::create_directories(crashes_);
  fs::create_symlink(elsewhere, crashes_ / "crash-link.log");
  answer_ = kDelete;
  reporter().offerPendingReports();
  EXPECT_EQ(asked_.size(), 0U);
  EXPECT_TRUE(fs::exists(elsewhere));
  EXPECT_EQ(names(), Lines{"crash-link.log"});
}

TEST_F(CrashReporterTest, WithoutAFolderNothingIsOffered) {
  reporter().offerPendingReports();
  EXPECT_EQ(asked_.size(), 0U);
}

TEST_F(CrashReporterTest, InstallingMakesAPrivateFolderAndAnEmptyLog) {
  EXPECT_EQ(runForked([this] {
              umask(0);
              reporter().install();
            }).status,
            0);
  EXPECT_EQ(modeOf(crashes_), 0700U);
  EXPECT_EQ(modeOf(crashes_.parent_path()), 0700U);
  EXPECT_EQ(names(), Lines{"crash-v1.2-1700000000-U-1.log"});
  EXPECT_EQ(modeOf(crashes_ / names()[0]), 0600U);
  EXPECT_EQ(fs::file_size(crashes_ / names()[0]), 0U);
}

TEST_F(CrashReporterTest, InstallingClosesAFolderThatWasOpenToOthers) {
  fs::create_directories(crashes_);
  fs::permissions(crashes_, fs::perms::all);
  runForked([this] { reporter().install(); });
  EXPECT_EQ(modeOf(crashes_), 0700U);
}

TEST_F(CrashReporterTest, AFolderThatCannotBeMadeKeepsNothingFromStarting) {
  fs::create_directories(crashes_.parent_path().parent_path());
  std::ofstream(crashes_.parent_path()) << "a file where the folder should be";
  EXPECT_EQ(runForked([this] {
              reporter().install();
              reporter().offerPendingReports();
            }).status,
            0);
}

TEST_F(CrashReporterTest, ACrashIsOfferedOnceAtTheNextLaunch) {
  EXPECT_EQ(runForked([this] {
              reporter("1.2", "FIRST").install();
              raise(SIGSEGV);
            }).signal,
            SIGSEGV);
  answer_ = kEmail;
  for (int launch = 0; launch < 2; ++launch) {
    CrashReporter next = reporter("1.2", "NEXT");
    next.offerPendingReports();
  }
  EXPECT_EQ(asked_.size(), 1U);
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_TRUE(opened_[0].ends_with("body=Velotap%20crash%3A%20signal%2011%0A"));
}

TEST_F(CrashReporterTest, AnUncaughtExceptionIsOfferedAtTheNextLaunch) {
  EXPECT_EQ(runForked([this] {
              reporter("1.2", "FIRST").install();
              std::thread([] { throw std::logic_error("impossible"); }).join();
            }).signal,
            SIGABRT);
  answer_ = kEmail;
  reporter("1.2", "NEXT").offerPendingReports();
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_NE(opened_[0].find("Uncaught%20exception%3A%20std%3A%3Alogic_error%0A"
                            "Reason%3A%20impossible%0A"),
            std::string::npos);
}

TEST_F(CrashReporterTest, AKilledRunLeavesNothingToOffer) {
  runForked([this] {
    reporter("1.2", "FIRST").install();
    raise(SIGKILL);
  });
  EXPECT_EQ(names().size(), 1U);
  reporter("1.2", "NEXT").offerPendingReports();
  EXPECT_EQ(asked_.size(), 0U);
  EXPECT_EQ(names(), Lines{});
}

TEST_F(CrashReporterTest, AnOrderlyEndLeavesNothingToOffer) {
  runForked([this] { reporter("1.2", "FIRST").install(); });
  reporter("1.2", "NEXT").offerPendingReports();
  EXPECT_EQ(asked_.size(), 0U);
}

}  // namespace
}  // namespace velotap
