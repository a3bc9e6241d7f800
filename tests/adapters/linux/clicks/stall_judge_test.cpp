#include "adapters/linux/clicks/stall_judge.hpp"

#include <gtest/gtest.h>

namespace velotap::test {
namespace {

TEST(StallJudge, eventsThatWaitHalfASecondUnservedAreAStall) {
  StallJudge judge;
  EXPECT_FALSE(judge.observe(true, 7, 10));
  EXPECT_FALSE(judge.observe(true, 7, 10.499));
  EXPECT_TRUE(judge.observe(true, 7, 10.5));
  EXPECT_TRUE(judge.observe(true, 7, 10.6));
}

TEST(StallJudge, serviceInBetweenStartsAnew) {
  StallJudge judge;
  EXPECT_FALSE(judge.observe(true, 7, 10));
  EXPECT_FALSE(judge.observe(true, 8, 10.5));
  EXPECT_FALSE(judge.observe(true, 8, 10.9));
  EXPECT_TRUE(judge.observe(true, 8, 11));
}

TEST(StallJudge, nothingThatWaitsIsNoStallHoweverLong) {
  StallJudge judge;
  EXPECT_FALSE(judge.observe(true, 7, 10));
  EXPECT_FALSE(judge.observe(false, 7, 20));
  EXPECT_FALSE(judge.observe(true, 7, 30));
  EXPECT_FALSE(judge.observe(true, 7, 30.4));
  EXPECT_TRUE(judge.observe(true, 7, 30.5));
}

}  // namespace
}  // namespace velotap::test
