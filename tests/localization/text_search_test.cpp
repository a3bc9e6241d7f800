#include "localization/text_search.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(TextSearch, IgnoresCaseInEveryLanguage) {
  EXPECT_TRUE(containsText("Pinch to Zoom", "PINCH"));
  EXPECT_TRUE(containsText("ТРАКПАД", "тракпад"));
  EXPECT_TRUE(containsText("Über", "ÜBER"));
  EXPECT_TRUE(containsText("Straße", "STRASSE"));
  EXPECT_TRUE(containsText("ΟΔΟΣ", "οδοσ"));
}

TEST(TextSearch, IgnoresMarksInEveryLanguage) {
  EXPECT_TRUE(containsText("Général", "general"));
  EXPECT_TRUE(containsText("general", "Géneral"));
  EXPECT_TRUE(containsText("Rotación", "rotacion"));
  EXPECT_TRUE(containsText("Español", "espanol"));
  EXPECT_TRUE(containsText("Auflösung", "auflosung"));
  EXPECT_TRUE(containsText("Façade", "facade"));
  EXPECT_TRUE(containsText("cafe\u0301", "café"));
  EXPECT_TRUE(containsText("Общи настройки", "настроики"));
}

TEST(TextSearch, FindsWholeQueriesOnly) {
  EXPECT_TRUE(containsText("abc", ""));
  EXPECT_TRUE(containsText("", ""));
  EXPECT_FALSE(containsText("", "a"));
  EXPECT_FALSE(containsText("abc", "abcd"));
  EXPECT_FALSE(containsText("a b", "ab"));
}

TEST(TextSearch, ComparesBrokenBytesAsTheyAre) {
  EXPECT_TRUE(containsText("a\xFF z", "\xFF"));
  EXPECT_FALSE(containsText("a\xFE z", "\xFF"));
}

TEST(TextSearch, OrdersNumbersByValue) {
  EXPECT_EQ(compareText("App 9", "App 10"), std::weak_ordering::less);
  EXPECT_EQ(compareText("App 10", "App 9"), std::weak_ordering::greater);
  EXPECT_EQ(compareText("App 010", "app 10"), std::weak_ordering::equivalent);
  EXPECT_EQ(compareText("9a", "9"), std::weak_ordering::greater);
  EXPECT_EQ(compareText("1.10", "1.9"), std::weak_ordering::greater);
  EXPECT_EQ(compareText("0", "00"), std::weak_ordering::equivalent);
}

TEST(TextSearch, OrdersWithoutCaseAndMarks) {
  EXPECT_EQ(compareText("éclair", "Eclair"), std::weak_ordering::equivalent);
  EXPECT_EQ(compareText("b", "Á"), std::weak_ordering::greater);
  EXPECT_EQ(compareText("", "a"), std::weak_ordering::less);
  EXPECT_EQ(compareText("ab", "a"), std::weak_ordering::greater);
}

TEST(TextSearch, TrimsBlanksOfAllKinds) {
  EXPECT_EQ(trimmedText(" \n\t tap \u00A0\u3000\r"), "tap");
  EXPECT_EQ(trimmedText("a b"), "a b");
  EXPECT_EQ(trimmedText(" \u2003 "), "");
  EXPECT_EQ(trimmedText(""), "");
}

}  // namespace
}  // namespace velotap
