#include "adapters/linux/workspace/activation_filter.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

using Verdict = ActivationFilter::Verdict;

TEST(ActivationFilter, aWindowIsReportedAtOnce) {
  ActivationFilter filter;
  EXPECT_EQ(filter.windowInFront(), Verdict::report);
  EXPECT_EQ(filter.windowInFront(), Verdict::report);
  EXPECT_FALSE(filter.deadline());
}

TEST(ActivationFilter, nothingBetweenTwoWindowsIsIgnored) {
  ActivationFilter filter;
  EXPECT_EQ(filter.windowInFront(), Verdict::report);
  EXPECT_EQ(filter.nothingInFront(50), Verdict::wait);
  EXPECT_EQ(filter.windowInFront(), Verdict::report);
  EXPECT_EQ(filter.settle(50 + kEmptyGrace), Verdict::ignore);
}

TEST(ActivationFilter, nothingCountsOnceItHasStoodLongEnough) {
  for (const auto& [after, verdict] :
       {std::pair{0.0, Verdict::wait}, std::pair{kEmptyGrace - 0.001, Verdict::wait},
        std::pair{kEmptyGrace, Verdict::report}, std::pair{kEmptyGrace + 0.001, Verdict::report}}) {
    ActivationFilter filter;
    EXPECT_EQ(filter.nothingInFront(50), Verdict::wait);
    ASSERT_TRUE(filter.deadline());
    EXPECT_EQ(*filter.deadline(), 50 + kEmptyGrace);
    EXPECT_EQ(filter.settle(50 + after), verdict) << after;
  }
}

TEST(ActivationFilter, itIsTheFirstEmptyReportThatCounts) {
  ActivationFilter filter;
  EXPECT_EQ(filter.nothingInFront(50), Verdict::wait);
  EXPECT_EQ(filter.nothingInFront(50.09), Verdict::ignore);
  EXPECT_EQ(filter.settle(50 + kEmptyGrace), Verdict::report);
}

TEST(ActivationFilter, nothingIsReportedOnce) {
  ActivationFilter filter;
  EXPECT_EQ(filter.nothingInFront(50), Verdict::wait);
  EXPECT_EQ(filter.settle(51), Verdict::report);
  EXPECT_EQ(filter.settle(52), Verdict::ignore);
  EXPECT_EQ(filter.nothingInFront(53), Verdict::ignore);
  EXPECT_FALSE(filter.deadline());
}

TEST(ActivationFilter, afterAWindowNothingCountsAnew) {
  ActivationFilter filter;
  EXPECT_EQ(filter.nothingInFront(50), Verdict::wait);
  EXPECT_EQ(filter.settle(51), Verdict::report);
  EXPECT_EQ(filter.windowInFront(), Verdict::report);
  EXPECT_EQ(filter.nothingInFront(60), Verdict::wait);
  EXPECT_EQ(filter.settle(60.05), Verdict::wait);
  EXPECT_EQ(filter.settle(60.1), Verdict::report);
}

TEST(ActivationFilter, resetForgetsAPendingReport) {
  ActivationFilter filter;
  EXPECT_EQ(filter.nothingInFront(50), Verdict::wait);
  filter.reset();
  EXPECT_EQ(filter.settle(51), Verdict::ignore);
}

}  // namespace
}  // namespace velotap
