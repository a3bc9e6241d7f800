#include "gestures/touch_history.hpp"

#include <gtest/gtest.h>

#include "fingers.hpp"
#include "support/allocation_counter.hpp"

namespace velotap {
namespace {

using test::finger;
using test::fingers;

TouchTrace traceOf(int id) {
  TouchTrace trace;
  trace.add(fingers({finger(id, 0.5F, 0.5F)}));
  return trace;
}

TEST(TouchHistory, KeepsTheLastFiftyOfEachKind) {
  TouchHistory history;
  EXPECT_TRUE(history.touches().taps.empty());
  for (int i = 1; i <= 50; ++i) history.keepTap(traceOf(i), i, 0.1, 5);
  history.keepPinch(traceOf(7));
  history.keepClick({0.25F, 0.5F});
  ASSERT_EQ(history.touches().taps.size(), 50U);
  EXPECT_EQ(history.touches().taps.front().end, 1);
  for (int i = 51; i <= 60; ++i) history.keepTap(traceOf(i), i, 0.2, 6);
  const KeptTouches kept = history.touches();
  ASSERT_EQ(kept.taps.size(), 50U);
  EXPECT_EQ(kept.taps.front().end, 11) << "oldest first";
  EXPECT_EQ(kept.taps.front().duration, 0.1);
  EXPECT_EQ(kept.taps.back().end, 60);
  EXPECT_EQ(kept.taps.back().duration, 0.2);
  EXPECT_EQ(kept.taps.back().sinceNatural, 6);
  ASSERT_EQ(kept.taps.back().contacts.size(), 1U);
  EXPECT_EQ(kept.taps.back().contacts[0].finger.id, 60);
  ASSERT_EQ(kept.pinches.size(), 1U) << "taps push out no pinch";
  EXPECT_EQ(kept.pinches[0].contacts[0].finger.id, 7);
  ASSERT_EQ(kept.clicks.size(), 1U);
  EXPECT_EQ(kept.clicks[0].position, (MTPoint{0.25F, 0.5F}));
  history.clear();
  EXPECT_TRUE(history.touches().taps.empty());
  EXPECT_TRUE(history.touches().pinches.empty());
  EXPECT_TRUE(history.touches().clicks.empty());
}

TEST(TouchHistory, ATapThatIsCutCouldNotBeJudged) {
  TouchTrace trace;
  for (std::size_t i = 0; i <= TouchTrace::kMaxContacts; ++i) {
    trace.add(fingers({finger(1, 0, 0)}));
  }
  TouchHistory history;
  history.keepTap(trace, 1, 0.1, 5);
  history.keepPinch(trace);
  EXPECT_TRUE(history.touches().taps.empty());
  ASSERT_EQ(history.touches().pinches.size(), 1U);
  EXPECT_EQ(history.touches().pinches[0].contacts.size(), TouchTrace::kMaxContacts);
}

TEST(TouchHistory, KeepingAllocatesNothing) {
  TouchHistory history;
  const TouchTrace trace = traceOf(1);
  const std::size_t before = test::allocationsOfThisThread();
  for (int i = 0; i < 120; ++i) {
    history.keepTap(trace, i, 0.1, 5);
    history.keepPinch(trace);
    history.keepClick({});
  }
  history.clear();
  history.keepTap(trace, 1, 0.1, 5);
  EXPECT_EQ(test::allocationsOfThisThread() - before, 0U);
}

}  // namespace
}  // namespace velotap
