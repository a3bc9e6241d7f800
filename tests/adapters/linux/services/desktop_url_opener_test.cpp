#include "adapters/linux/services/desktop_url_opener.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>

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

class DesktopUrlOpenerTest : public ::testing::Test {
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
  std::string seen() const { return contentOf(folder_.path() / "seen"); }
  TemporaryFolder folder_;
};

TEST_F(DesktopUrlOpenerTest, HandsTheAddressOverAsOneArgument) {
  DesktopUrlOpener urls("", opener("exit 0"), 20000);
  const std::string url = "mailto:a@example.com?subject=$(touch%20x)&body=`id`;'\"*";
  EXPECT_TRUE(urls.open(url));
  EXPECT_EQ(seen(), url + "\n");
}

TEST_F(DesktopUrlOpenerTest, SaysWhenNoProgramTookIt) {
  DesktopUrlOpener urls("", opener("exit 3"), 20000);
  EXPECT_FALSE(urls.open("https://example.com"));
  DesktopUrlOpener killed("", opener("kill -9 $$"), 20000);
  EXPECT_FALSE(killed.open("https://example.com"));
}

TEST_F(DesktopUrlOpenerTest, OneThatKeepsRunningHasTakenIt) {
  const std::string fifo = (folder_.path() / "fifo").string();
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  DesktopUrlOpener urls("", opener("read line < '" + fifo + "'; exit 3"), 0);
  EXPECT_TRUE(urls.open("https://example.com"));
  std::ofstream(fifo) << "go on\n";
}

TEST_F(DesktopUrlOpenerTest, SaysWhenThereIsNoOpener) {
  DesktopUrlOpener urls("", {"velotap-no-such-opener"}, 20000);
  EXPECT_FALSE(urls.open("https://example.com"));
}

TEST_F(DesktopUrlOpenerTest, StartsNothingForWhatItRefuses) {
  DesktopUrlOpener urls("", opener("exit 0"), 20000);
  EXPECT_FALSE(urls.open("--version"));
  EXPECT_EQ(seen(), "");
}

TEST_F(DesktopUrlOpenerTest, PagesOfAnUnknownDesktopDoNotOpen) {
  DesktopUrlOpener urls("sway", opener("exit 0"), 20000);
  EXPECT_FALSE(urls.open("x-apple.systempreferences:com.apple.preference.mouse"));
  EXPECT_EQ(seen(), "");
}

TEST_F(DesktopUrlOpenerTest, PagesAreShownByTheDesktopsOwnProgram) {
  const auto program = folder_.path() / "xfce4-mouse-settings";
  std::ofstream(program) << "#!/bin/sh\nexit 0\n";
  ::chmod(program.c_str(), 0700);
  const std::string before = getenv("PATH");
  setenv("PATH", (folder_.path().string() + ":" + before).c_str(), 1);
  DesktopUrlOpener urls("XFCE", {"velotap-no-such-opener"}, 20000);
  EXPECT_TRUE(urls.open("x-apple.systempreferences:com.apple.preference.mouse"));
  setenv("PATH", before.c_str(), 1);
}

}  // namespace
}  // namespace velotap
