#include "localization/text_format.hpp"

#include <gtest/gtest.h>

#include <string>

namespace velotap {
namespace {

TEST(TextFormat, FillsArgumentsInTheirOrder) {
  EXPECT_EQ(formatText("%@ of %@", {"2", "7"}), "2 of 7");
  EXPECT_EQ(formatText("%d/%ld/%lld", {std::int64_t{1}, std::int64_t{-2}, std::int64_t{3}}),
            "1/-2/3");
}

TEST(TextFormat, FillsChosenArguments) {
  EXPECT_EQ(formatText("%2$@ of %1$@, %2$@", {"2", "7"}), "7 of 2, 7");
  EXPECT_EQ(formatText("%1$d", {std::int64_t{5}}), "5");
}

TEST(TextFormat, ChosenArgumentsDoNotMoveTheOrder) {
  EXPECT_EQ(formatText("%2$@ %@", {"a", "b"}), "b a");
}

TEST(TextFormat, WritesTheSignItself) {
  EXPECT_EQ(formatText("100%% of %@%%", {"x"}), "100% of x%");
}

TEST(TextFormat, LeavesWhatItCannotFill) {
  EXPECT_EQ(formatText("%@ %@", {"a"}), "a %@");
  EXPECT_EQ(formatText("%d", {"text"}), "%d");
  EXPECT_EQ(formatText("%@", {std::int64_t{3}}), "%@");
  EXPECT_EQ(formatText("5 % x %q %", {"a"}), "5 % x %q %");
  EXPECT_EQ(formatText("%0$@ %100$@ %1$", {"a"}), "%0$@ %100$@ %1$");
}

TEST(TextFormat, IgnoresSurplusArguments) {
  EXPECT_EQ(formatText("%@", {"a", "b"}), "a");
  EXPECT_EQ(formatText("", {"a"}), "");
}

TEST(TextFormat, ArgumentsAreNotReadAsPatterns) {
  EXPECT_EQ(formatText("%@ %@", {"%@", "b"}), "%@ b");
}

TEST(TextFormat, NamesTheArgumentsByNumber) {
  const std::vector<FormatSpecifier> both = {{.argument = 1, .type = FormatType::text},
                                             {.argument = 2, .type = FormatType::integer}};
  EXPECT_EQ(formatSpecifiers("%@ %d"), both);
  EXPECT_EQ(formatSpecifiers("%2$d: %1$@"), both);
  EXPECT_TRUE(formatSpecifiers("100 %%, 3 % 4").empty());
}

}  // namespace
}  // namespace velotap
