#include "adapters/updates/update_feed.hpp"

#include <gtest/gtest.h>

#include "signed_feed.hpp"

namespace velotap {
namespace {

using test::Maker;

TEST(UpdateFeed, ReadsWhatTheMakerSigned) {
  const Maker maker;
  const auto announced = readUpdateFeed(maker.announce("1.4.2"), maker.key());
  ASSERT_TRUE(announced);
  EXPECT_EQ(announced->version, "1.4.2");
  EXPECT_EQ(announced->page, "https://example.com/get");
}

TEST(UpdateFeed, RefusesWhatSomebodyElseSigned) {
  EXPECT_FALSE(readUpdateFeed(Maker().announce("1.4.2"), Maker().key()));
}

TEST(UpdateFeed, RefusesEveryChangedByte) {
  const Maker maker;
  const std::string feed = maker.announce("1.4.2");
  for (std::size_t i = 0; i + 1 < feed.size(); ++i) {
    std::string changed = feed;
    changed[i] = changed[i] == 'x' ? 'y' : 'x';
    EXPECT_FALSE(readUpdateFeed(changed, maker.key())) << i;
  }
}

TEST(UpdateFeed, RefusesEveryTruncation) {
  const Maker maker;
  const std::string feed = maker.announce("1.4.2");
  for (std::size_t length = 0; length + 1 < feed.size(); ++length) {
    EXPECT_FALSE(readUpdateFeed(feed.substr(0, length), maker.key())) << length;
  }
  EXPECT_TRUE(readUpdateFeed(feed.substr(0, feed.size() - 1), maker.key()));
}

TEST(UpdateFeed, RefusesWhatIsSignedAndMakesNoSense) {
  const Maker maker;
  for (const char* text :
       {"", "\n", "velotap-updates 2\nversion 1\npage https://x\n",
        "velotap-updates 1\npage https://x\nversion 1\n", "velotap-updates 1\nversion 1\n",
        "velotap-updates 1\nversion one\npage https://x\n",
        "velotap-updates 1\nversion \npage https://x\n",
        "velotap-updates 1\nversion 1\npage http://x\n",
        "velotap-updates 1\nversion 1\npage file:///etc\n"}) {
    EXPECT_FALSE(readUpdateFeed(maker.sign(text), maker.key())) << text;
  }
}

TEST(UpdateFeed, LaterMakersMayAddLines) {
  const Maker maker;
  EXPECT_TRUE(readUpdateFeed(
      maker.sign("velotap-updates 1\nversion 2\npage https://x\nnotes something new\n"),
      maker.key()));
}

TEST(UpdateFeed, KnowsAKey) {
  EXPECT_TRUE(isUpdateKey(Maker().key()));
  EXPECT_FALSE(isUpdateKey(""));
  EXPECT_FALSE(isUpdateKey("AAAA"));
  EXPECT_FALSE(isUpdateKey(Maker().key() + "AAAA"));
  EXPECT_FALSE(isUpdateKey("not base64 at all, though it is long enough"));
  EXPECT_FALSE(readUpdateFeed(Maker().announce("1"), ""));
}

TEST(IsNewerVersion, ComparesNumbersNotLetters) {
  EXPECT_TRUE(isNewerVersion("0.1.1", "0.1.0"));
  EXPECT_TRUE(isNewerVersion("0.10", "0.9"));
  EXPECT_TRUE(isNewerVersion("1", "0.9.9"));
  EXPECT_FALSE(isNewerVersion("0.1.0", "0.1.0"));
  EXPECT_FALSE(isNewerVersion("0.1", "0.1.0"));
  EXPECT_TRUE(isNewerVersion("0.1.0.1", "0.1"));
  EXPECT_FALSE(isNewerVersion("0.0.9", "0.1.0"));
  EXPECT_FALSE(isNewerVersion("", "0.1"));
  EXPECT_FALSE(isNewerVersion("1.", "0.1"));
  EXPECT_FALSE(isNewerVersion("1..2", "0.1"));
  EXPECT_FALSE(isNewerVersion("v1", "0.1"));
  EXPECT_FALSE(isNewerVersion("99999999999", "0.1"));
  EXPECT_TRUE(isNewerVersion("0.1", "dev"));
}

}  // namespace
}  // namespace velotap
