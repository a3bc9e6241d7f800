#include "adapters/updates/feed_updates.hpp"

#include <gtest/gtest.h>

#include <utility>

#include "signed_feed.hpp"
#include "support/desktop.hpp"
#include "support/recording_urls.hpp"

namespace velotap {
namespace {

using test::Lines;

constexpr double kDay = 24 * 3600;

class FeedUpdatesTest : public ::testing::Test, protected test::Desktop {
 protected:
  FeedUpdatesTest() { make(); }
  void make() {
    updates_.emplace(
        UpdateSource{.feed = feed_, .key = key_, .version = "1.0"},
        FeedUpdates::Effects{
            .fetch =
                [this](const std::string& url,
                       std::function<void(std::optional<std::string>)> done) {
                  fetched_.push_back(url);
                  answer_ = std::move(done);
                },
            .localize = [](std::string_view key) { return std::string(key) + " %@ %@"; }},
        clock, mainQueue, preferences, alerts, urls_);
  }
  void answer(const std::optional<std::string>& content) {
    const auto done = std::exchange(answer_, nullptr);
    ASSERT_TRUE(done);
    done(content);
  }
  [[nodiscard]] Lines shown() const {
    Lines titles;
    for (const AlertRequest& alert : alerts.shown()) {
      titles.push_back(alert.message.substr(0, alert.message.find(' ')));
    }
    return titles;
  }

  test::Maker maker_;
  std::string feed_ = "https://example.com/feed";
  std::string key_ = maker_.key();
  test::RecordingUrls urls_;
  Lines fetched_;
  std::function<void(std::optional<std::string>)> answer_;
  std::optional<FeedUpdates> updates_;
};

TEST_F(FeedUpdatesTest, SaysWhyThereAreNone) {
  EXPECT_EQ(updates_->unavailableReason(), std::nullopt);
  key_ = "";
  make();
  EXPECT_EQ(updates_->unavailableReason(), "updates.unavailable.key");
  for (const char* feed : {"", "http://example.com"}) {
    feed_ = feed;
    make();
    EXPECT_EQ(updates_->unavailableReason(), "updates.unavailable.feed");
  }
  updates_->start();
  updates_->checkForUpdates();
  advance(10 * kDay);
  EXPECT_EQ(fetched_, Lines{});
  EXPECT_FALSE(updates_->checksAutomatically());
}

TEST_F(FeedUpdatesTest, ChecksAMinuteAfterTheFirstLaunchAndThenOnceADay) {
  updates_->start();
  advance(59.999);
  EXPECT_EQ(fetched_.size(), 0U);
  advance(0.001);
  EXPECT_EQ(fetched_, Lines{"https://example.com/feed"});
  answer(maker_.announce("1.0"));
  advance(kDay - 0.001);
  EXPECT_EQ(fetched_.size(), 1U);
  advance(0.002);
  EXPECT_EQ(fetched_.size(), 2U);
  EXPECT_EQ(shown(), Lines{});
}

TEST_F(FeedUpdatesTest, ALaunchInBetweenDoesNotCheckAgain) {
  updates_->start();
  advance(60);
  answer(maker_.announce("1.0"));
  advance(kDay / 2);
  make();
  updates_->start();
  advance(kDay / 2 - 1);
  EXPECT_EQ(fetched_.size(), 1U);
  advance(2);
  EXPECT_EQ(fetched_.size(), 2U);
}

TEST_F(FeedUpdatesTest, AFailedCheckIsTriedTheNextDayAndSaysNothing) {
  updates_->start();
  advance(60);
  answer(std::nullopt);
  EXPECT_EQ(updates_->lastCheck(), std::nullopt);
  advance(kDay + 1);
  EXPECT_EQ(fetched_.size(), 2U);
  EXPECT_EQ(shown(), Lines{});
}

TEST_F(FeedUpdatesTest, ThePersonMayForbidIt) {
  int told = 0;
  const Observation observation = updates_->observe([&told] { ++told; });
  updates_->start();
  updates_->setChecksAutomatically(false);
  EXPECT_EQ(told, 1);
  advance(3 * kDay);
  EXPECT_EQ(fetched_.size(), 0U);
  make();
  EXPECT_FALSE(updates_->checksAutomatically()) << "remembered";
  updates_->start();
  updates_->setChecksAutomatically(true);
  advance(60);
  EXPECT_EQ(fetched_.size(), 1U);
}

TEST_F(FeedUpdatesTest, WhoAsksIsToldWhateverComes) {
  updates_->checkForUpdates();
  answer(std::nullopt);
  updates_->checkForUpdates();
  answer("garbage");
  updates_->checkForUpdates();
  answer(test::Maker().announce("9.9"));
  updates_->checkForUpdates();
  answer(maker_.announce("1.0"));
  EXPECT_EQ(shown(), (Lines{"updates.failed.title", "updates.failed.title", "updates.failed.title",
                            "updates.current.title"}));
  EXPECT_EQ(alerts.shown().back().informativeText, "updates.current.body 1.0 %@");
}

TEST_F(FeedUpdatesTest, ANewerVersionLeadsToItsPage) {
  updates_->checkForUpdates();
  answer(maker_.announce("1.1", "https://example.com/1.1"));
  EXPECT_EQ(shown(), Lines{"updates.available.title"});
  EXPECT_EQ(alerts.shown()[0].informativeText, "updates.available.body 1.1 1.0");
  EXPECT_EQ(urls_.opened, Lines{"https://example.com/1.1"});
}

TEST_F(FeedUpdatesTest, LaterOpensNothingAndIsNotAskedAgainByItself) {
  alerts.setAnswer(1);
  updates_->start();
  advance(60);
  answer(maker_.announce("1.1"));
  EXPECT_EQ(urls_.opened, Lines{});
  advance(kDay + 1);
  answer(maker_.announce("1.1"));
  EXPECT_EQ(shown().size(), 1U);
  advance(kDay + 1);
  answer(maker_.announce("1.2"));
  EXPECT_EQ(shown().size(), 2U) << "a still newer one is";
  updates_->checkForUpdates();
  answer(maker_.announce("1.2"));
  EXPECT_EQ(shown().size(), 3U) << "and who asks is told";
}

TEST_F(FeedUpdatesTest, AskingDuringACheckStartsNoSecondOne) {
  updates_->start();
  advance(60);
  updates_->checkForUpdates();
  updates_->checkForUpdates();
  EXPECT_EQ(fetched_.size(), 1U);
  answer(maker_.announce("1.0"));
  EXPECT_EQ(shown(), Lines{"updates.current.title"});
}

TEST_F(FeedUpdatesTest, RemembersWhenItLastHadAnAnswer) {
  EXPECT_EQ(updates_->lastCheck(), std::nullopt);
  int told = 0;
  const Observation observation = updates_->observe([&told] { ++told; });
  updates_->checkForUpdates();
  answer(maker_.announce("1.0"));
  EXPECT_EQ(told, 1);
  ASSERT_TRUE(updates_->lastCheck());
  const auto off = *updates_->lastCheck() - clock.date();
  EXPECT_LT(std::chrono::abs(off), std::chrono::milliseconds(1));
}

TEST_F(FeedUpdatesTest, NonsenseInTheStoreIsNoDate) {
  for (const Value& value : {Value("yesterday"), Value(true), Value(1e300), Value(-1e300)}) {
    preferences.store(FeedUpdates::kDomain, {{"lastCheck", value}});
    EXPECT_EQ(updates_->lastCheck(), std::nullopt);
  }
}

TEST_F(FeedUpdatesTest, AClockThatWasSetBackPutsNothingOff) {
  preferences.store(FeedUpdates::kDomain, {{"lastCheck", 8e9}});
  updates_->start();
  advance(60);
  EXPECT_EQ(fetched_.size(), 1U);
}

TEST_F(FeedUpdatesTest, AnAnswerAfterTheEndIsForgotten) {
  updates_->checkForUpdates();
  updates_.reset();
  answer(maker_.announce("1.1"));
  EXPECT_EQ(shown(), Lines{});
}

}  // namespace
}  // namespace velotap
