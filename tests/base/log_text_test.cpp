#include "base/log_text.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velotap {
namespace {

TEST(LogText, decimalsHaveAFraction) {
  EXPECT_EQ(decimalText(512), "512.0");
  EXPECT_EQ(decimalText(384.5), "384.5");
  EXPECT_EQ(decimalText(-0.1), "-0.1");
  EXPECT_EQ(decimalText(0), "0.0");
}

TEST(LogText, extremeNumbersFit) {
  EXPECT_EQ(decimalText(std::numeric_limits<double>::quiet_NaN()), "nan");
  EXPECT_EQ(decimalText(-std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_EQ(decimalText(std::numeric_limits<double>::max()).size(), 311U);
  EXPECT_EQ(decimalText(std::numeric_limits<double>::denorm_min()).substr(0, 4), "0.00");
}

TEST(LogText, pointsAndLists) {
  EXPECT_EQ(pointText({512, 384.5}), "(512.0, 384.5)");
  EXPECT_EQ(listText({}), "[]");
  EXPECT_EQ(listText({"a", "b c"}), "[\"a\", \"b c\"]");
}

TEST(LogText, fixedDigits) {
  EXPECT_EQ(fixedText(0.0524, 3), "0.052");
  EXPECT_EQ(fixedText(12, 1), "12.0");
}

}  // namespace
}  // namespace velotap
