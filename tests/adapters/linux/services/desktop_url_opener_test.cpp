#include "adapters/linux/services/desktop_url_opener.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>

#include "adapters/simulated/simulated_main_queue.hpp"
#include "support/served_loop.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(IsOpenable, TakesAddressesOfItsKinds) {
  EXPECT_TRUE(isOpenable("https://example.com/a?b=c&d=%20#e"));
  EXPECT_TRUE(isOpenable("http://example.com"));
  EXPECT_TRUE(isOpenable("mailto:a@example.com?subject=x"));
  EXPECT_TRUE(isOpenable("file:///usr/bin"));
}

TEST(IsOpenable, RefusesEverythingElse) {
  for (const char* url :
       {"", "https:", "-e", "--help", "/etc/passwd", "javascript:alert(1)", "HTTPS://x", "ftp://x",
        "https://a b", "https://a\nb", "https://ä", "https://x\x7F", " https://x"}) {
    EXPECT_FALSE(isOpenable(url)) << url;
  }
}

TEST(IsOpenable, RefusesWhatIsTooLong) {
  const auto ofLength = [](std::size_t length) { return "mailto:" + std::string(length - 7, 'x'); };
  EXPECT_TRUE(isOpenable(ofLength(65535)));
  EXPECT_TRUE(isOpenable(ofLength(65536)));
  EXPECT_FALSE(isOpenable(ofLength(65537)));
}

class DesktopUrlOpenerTest : public ::testing::Test, protected test::ServedLoop {
 protected:
  /// An opener that writes down its arguments, one a line, and ends as told.
  std::vector<std::string> opener(const std::string& ending) const {
    const auto script = folder_.path() / "opener";
    std::ofstream(script) << "#!/bin/sh\nprintf '%s\\n' \"$@\" > '"
                          << (folder_.path() / "seen").string() << "'\n"
                          << ending << "\n";
    ::chmod(script.c_str(), 0700);
    return {script.string()};
  }
  DesktopUrlOpener desktop(std::vector<std::string> opener) {
    return {queue, queue, "", std::move(opener)};
  }
  UrlOpener::Outcome note() {
    return [this](bool taken) {
      outcomes_.push_back(taken);
      check();
    };
  }
  /// Served until it is known.
  bool outcomeOf(DesktopUrlOpener& urls, const std::string& url) {
    outcomes_.clear();
    urls.open(url, note());
    serveUntil([this] { return !outcomes_.empty(); });
    return outcomes_ == std::vector<bool>{true};
  }
  std::string seen() const { return contentOf(folder_.path() / "seen"); }

  TemporaryFolder folder_;
  std::vector<bool> outcomes_;
};

TEST_F(DesktopUrlOpenerTest, HandsTheAddressOverAsOneArgument) {
  auto urls = desktop(opener("exit 0"));
  const std::string url = "mailto:a@example.com?subject=$(touch%20x)&body=`id`;'\"*";
  EXPECT_TRUE(outcomeOf(urls, url));
  EXPECT_EQ(seen(), url + "\n");
}

TEST_F(DesktopUrlOpenerTest, SaysWhenNoProgramTookIt) {
  auto urls = desktop(opener("exit 3"));
  EXPECT_FALSE(outcomeOf(urls, "https://example.com"));
  auto killed = desktop(opener("kill -9 $$"));
  EXPECT_FALSE(outcomeOf(killed, "https://example.com"));
}

TEST_F(DesktopUrlOpenerTest, TheOutcomeIsNobodysBusinessWhereNobodyAsks) {
  auto urls = desktop(opener("exit 3"));
  urls.open("https://example.com", {});
  EXPECT_FALSE(outcomeOf(urls, "https://example.com"));
}

// In virtual time: an opener that waits for a word that never comes.
class PatientOpenerTest : public DesktopUrlOpenerTest {
 protected:
  PatientOpenerTest() {
    EXPECT_EQ(mkfifo(fifo_.c_str(), 0600), 0);
    urls_.open("https://example.com", note());
  }
  // It has been waiting for this all along; one that has ended by now leaves the word unread.
  ~PatientOpenerTest() override { std::fstream(fifo_) << "go on\n"; }

  const std::string fifo_ = (folder_.path() / "fifo").string();
  SimulatedClock clock_;
  SimulatedMainQueue patience_{clock_};
  DesktopUrlOpener urls_{queue, patience_, "", opener("read line < '" + fifo_ + "'; exit 3")};
};

TEST_F(PatientOpenerTest, IsNotWaitedFor) {
  EXPECT_TRUE(outcomes_.empty()) << "it still runs, and opening has returned";
}

TEST_F(PatientOpenerTest, HasTakenTheAddressWhenItKeepsRunning) {
  patience_.runUntil(virtualTime(DesktopUrlOpener::kPatienceSeconds - 0.001));
  EXPECT_TRUE(outcomes_.empty());
  patience_.runUntil(virtualTime(DesktopUrlOpener::kPatienceSeconds));
  EXPECT_EQ(outcomes_, std::vector<bool>{true});
}

TEST_F(PatientOpenerTest, IsToldOfOnce) {
  patience_.runUntil(virtualTime(DesktopUrlOpener::kPatienceSeconds));
  std::ofstream(fifo_) << "go on\n";
  auto other = desktop(opener("exit 3"));
  other.open("https://example.com", note());
  serveUntil([this] { return outcomes_.size() > 1; });
  EXPECT_EQ(outcomes_, (std::vector<bool>{true, false})) << "the second is the other's";
}

TEST_F(DesktopUrlOpenerTest, WhatIsStillOpenWhenItGoesIsNotToldOf) {
  {
    auto urls = desktop(opener("exit 0"));
    urls.open("https://example.com", note());
  }
  auto other = desktop(opener("exit 3"));
  EXPECT_FALSE(outcomeOf(other, "https://example.com"));
}

TEST_F(DesktopUrlOpenerTest, SaysWhenThereIsNoOpener) {
  auto urls = desktop({"velotap-no-such-opener"});
  urls.open("https://example.com", note());
  EXPECT_EQ(outcomes_, std::vector<bool>{false}) << "at once";
}

TEST_F(DesktopUrlOpenerTest, StartsNothingForWhatItRefuses) {
  auto urls = desktop(opener("exit 0"));
  urls.open("--version", note());
  EXPECT_EQ(outcomes_, std::vector<bool>{false});
  EXPECT_EQ(seen(), "");
}

TEST_F(DesktopUrlOpenerTest, PagesOfAnUnknownDesktopDoNotOpen) {
  DesktopUrlOpener urls(queue, queue, "sway", opener("exit 0"));
  urls.open("x-apple.systempreferences:com.apple.preference.mouse", note());
  EXPECT_EQ(outcomes_, std::vector<bool>{false});
  EXPECT_EQ(seen(), "");
}

TEST_F(DesktopUrlOpenerTest, PagesAreShownByTheDesktopsOwnProgram) {
  const auto program = folder_.path() / "xfce4-mouse-settings";
  std::ofstream(program) << "#!/bin/sh\nexit 0\n";
  ::chmod(program.c_str(), 0700);
  const std::string before = getenv("PATH");
  setenv("PATH", (folder_.path().string() + ":" + before).c_str(), 1);
  DesktopUrlOpener urls(queue, queue, "XFCE", {"velotap-no-such-opener"});
  EXPECT_TRUE(outcomeOf(urls, "x-apple.systempreferences:com.apple.preference.mouse"));
  setenv("PATH", before.c_str(), 1);
}

}  // namespace
}  // namespace velotap
