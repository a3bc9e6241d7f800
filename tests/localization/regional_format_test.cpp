#include "localization/regional_format.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace velotap {
namespace {

constexpr std::int64_t kMoment = 1'700'000'000;  // 14 November 2023, 22:13:20 universal time

TEST(RegionalFormat, GroupsDigitsAsTheRegionDoes) {
  EXPECT_EQ(RegionalFormat("en_US").wholeNumber(1234567), "1,234,567");
  EXPECT_EQ(RegionalFormat("en_US").wholeNumber(999), "999");
  EXPECT_EQ(RegionalFormat("en_US").wholeNumber(-1000), "-1,000");
  EXPECT_EQ(RegionalFormat("de_DE").wholeNumber(1234), "1.234");
  EXPECT_EQ(RegionalFormat("de_CH").wholeNumber(1234), "1’234");
  EXPECT_EQ(RegionalFormat("fr_FR").wholeNumber(1234), "1\u202F234");
  EXPECT_EQ(RegionalFormat("es_ES").wholeNumber(1234), "1234");
  EXPECT_EQ(RegionalFormat("es_ES").wholeNumber(12345), "12.345");
  EXPECT_EQ(RegionalFormat("bg_BG").wholeNumber(1234), "1234");
  EXPECT_EQ(RegionalFormat("bg_BG").wholeNumber(12345), "12\u00A0345");
}

TEST(RegionalFormat, WritesFractionsWithTheRegionsSign) {
  EXPECT_EQ(RegionalFormat("en").number(0.05, 2), "0.05");
  EXPECT_EQ(RegionalFormat("de").number(0.05, 2), "0,05");
  EXPECT_EQ(RegionalFormat("de_CH").number(1234.5, 1), "1’234.5");
  EXPECT_EQ(RegionalFormat("fr").number(0.0612, 3), "0,061");
  EXPECT_EQ(RegionalFormat("en").number(-0.001, 2), "0.00");
  EXPECT_EQ(RegionalFormat("en").number(-0.5, 1), "-0.5");
  EXPECT_EQ(RegionalFormat("en").number(std::numeric_limits<double>::infinity(), 1), "∞");
  EXPECT_EQ(RegionalFormat("en").number(std::numeric_limits<double>::quiet_NaN(), 1), "NaN");
  EXPECT_EQ(RegionalFormat("en").number(std::numeric_limits<double>::max(), 0).substr(0, 4),
            "179,");
}

TEST(RegionalFormat, WritesPercentagesMillisecondsAndMultipliers) {
  EXPECT_EQ(RegionalFormat("en").percent(0.35), "35%");
  EXPECT_EQ(RegionalFormat("de").percent(0.35), "35\u00A0%");
  EXPECT_EQ(RegionalFormat("fr").percent(0.35), "35\u202F%");
  EXPECT_EQ(RegionalFormat("bg").percent(0.65), "65%");
  EXPECT_EQ(RegionalFormat("en").percent(0.29), "29%");  // 0.29 · 100 is a hair below 29
  EXPECT_EQ(RegionalFormat("en").milliseconds(300), "300\u00A0ms");
  EXPECT_EQ(RegionalFormat("bg").milliseconds(300), "300\u00A0мс");
  EXPECT_EQ(RegionalFormat("en").multiplier(1), "1.0×");
  EXPECT_EQ(RegionalFormat("es").multiplier(0.3), "0,3×");
}

TEST(RegionalFormat, WritesTimesAndDates) {
  EXPECT_EQ(RegionalFormat("en_US").timeOfDay(kMoment), "10:13:20\u00A0PM");
  EXPECT_EQ(RegionalFormat("en_GB").timeOfDay(kMoment), "22:13:20");
  EXPECT_EQ(RegionalFormat("en_US").timeOfDay(0), "12:00:00\u00A0AM");
  EXPECT_EQ(RegionalFormat("en_US").timeOfDay(43200), "12:00:00\u00A0PM");
  EXPECT_EQ(RegionalFormat("en_US").date(kMoment), "11/14/2023");
  EXPECT_EQ(RegionalFormat("en_GB").date(0), "01/01/1970");
  EXPECT_EQ(RegionalFormat("en_CA").date(kMoment), "2023-11-14");
  EXPECT_EQ(RegionalFormat("de_DE").dateAndTime(kMoment), "14.11.2023, 22:13:20");
  EXPECT_EQ(RegionalFormat("bg").date(kMoment), "14.11.2023\u00A0г.");
}

TEST(RegionalFormat, FollowsTheTimeZoneOfTheMoment) {
  const auto twoHours = [](std::int64_t) { return std::int64_t{7200}; };
  const RegionalFormat sofia("bg_BG", twoHours);
  EXPECT_EQ(sofia.timeOfDay(kMoment), "00:13:20");
  EXPECT_EQ(sofia.date(kMoment), "15.11.2023\u00A0г.");
  const RegionalFormat west("de", [](std::int64_t) { return std::int64_t{-3600}; });
  EXPECT_EQ(west.calendarDay(0), -1);
  EXPECT_EQ(west.dateAndTime(0), "31.12.1969, 23:00:00");
}

TEST(RegionalFormat, ReadsLocalesInEveryNotation) {
  for (const auto* locale : {"de_AT", "de-AT", "de_AT.UTF-8", "de_AT@euro", "de_Latn_AT"}) {
    EXPECT_EQ(RegionalFormat(locale).wholeNumber(1234), "1\u00A0234") << locale;
  }
  EXPECT_EQ(RegionalFormat("de_LU").wholeNumber(1234), "1.234");
  for (const auto* locale : {"C", "POSIX", "", "ja_JP"}) {
    EXPECT_EQ(RegionalFormat(locale).number(1234.5, 1), "1,234.5") << locale;
  }
}

TEST(RegionalFormat, KnowsWhatIsOne) {
  EXPECT_TRUE(RegionalFormat::isSingular("en", 1));
  EXPECT_FALSE(RegionalFormat::isSingular("en", 0));
  EXPECT_FALSE(RegionalFormat::isSingular("fr", 2));
  EXPECT_TRUE(RegionalFormat::isSingular("fr", 0));
}

}  // namespace
}  // namespace velotap
