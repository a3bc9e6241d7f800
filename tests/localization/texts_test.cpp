#include "localization/texts.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velotap {
namespace {

constexpr std::int64_t kDay = 86400;
constexpr std::int64_t kNoon = 20000 * kDay + kDay / 2;

Texts textsIn(const std::string& language) {
  const std::vector<std::string> preferred = {language};
  return {Localization::shared().bundle(preferred), RegionalFormat(language)};
}

TEST(Texts, LookUpAndFill) {
  const Texts german = textsIn("de");
  EXPECT_EQ(german("Cancel"), "Abbrechen");
  EXPECT_EQ(german("Last checked %@", {"gestern"}), "Zuletzt gesucht: gestern");
  EXPECT_EQ(german("no such key"), "no such key");
}

TEST(Texts, CountInTheGrammarOfTheLanguage) {
  EXPECT_EQ(textsIn("en").counted("relative.days", 1), "1 day ago");
  EXPECT_EQ(textsIn("en").counted("relative.days", 2), "2 days ago");
  EXPECT_EQ(textsIn("en").counted("relative.days", 0), "0 days ago");
  EXPECT_EQ(textsIn("fr").counted("relative.days", 0), "il y a 0 jour");
  EXPECT_EQ(textsIn("bg").counted("relative.minutes", 5), "преди 5 минути");
}

TEST(Texts, SayHowLongAgoAMomentWas) {
  const Texts english = textsIn("en");
  const auto ago = [&](std::int64_t seconds) { return english.relative(kNoon - seconds, kNoon); };
  EXPECT_EQ(ago(-50), "now");
  EXPECT_EQ(ago(0), "now");
  EXPECT_EQ(ago(59), "now");
  EXPECT_EQ(ago(60), "1 minute ago");
  EXPECT_EQ(ago(3599), "59 minutes ago");
  EXPECT_EQ(ago(3600), "1 hour ago");
  EXPECT_EQ(ago(kDay / 2), "12 hours ago");
  EXPECT_EQ(ago(kDay / 2 + 1), "yesterday");
  EXPECT_EQ(ago(kDay + kDay / 2), "yesterday");
  EXPECT_EQ(ago(kDay + kDay / 2 + 1), "2 days ago");
  EXPECT_EQ(ago(6 * kDay), "6 days ago");
  EXPECT_EQ(ago(7 * kDay), "last week");
  EXPECT_EQ(ago(13 * kDay), "last week");
  EXPECT_EQ(ago(14 * kDay), "2 weeks ago");
  EXPECT_EQ(ago(29 * kDay), "4 weeks ago");
  EXPECT_EQ(ago(30 * kDay), "last month");
  EXPECT_EQ(ago(60 * kDay), "2 months ago");
  EXPECT_EQ(ago(364 * kDay), "12 months ago");
  EXPECT_EQ(ago(365 * kDay), "last year");
  EXPECT_EQ(ago(730 * kDay), "2 years ago");
}

// "Yesterday" is a matter of the calendar on the wall, not of twenty-four hours.
TEST(Texts, TakeTheCalendarOfTheTimeZone) {
  const std::vector<std::string> preferred = {"en"};
  const Texts east(Localization::shared().bundle(preferred),
                   RegionalFormat("en", [](std::int64_t) { return std::int64_t{6 * 3600}; }));
  EXPECT_EQ(east.relative(kNoon, kNoon + 7 * 3600), "yesterday");
  EXPECT_EQ(textsIn("en").relative(kNoon, kNoon + 7 * 3600), "7 hours ago");
}

}  // namespace
}  // namespace velotap
