#include "gestures/touch_trace.hpp"

#include <gtest/gtest.h>

#include "fingers.hpp"

namespace velotap {
namespace {

using test::finger;
using test::fingers;

TEST(TouchTrace, NumbersTheFrames) {
  TouchTrace trace;
  trace.add(fingers({finger(1, 0.1F, 0.2F), finger(2, 0.3F, 0.4F)}));
  trace.add(fingers({finger(2, 0.5F, 0.6F)}));
  ASSERT_EQ(trace.contacts().size(), 3U);
  EXPECT_EQ(trace.contacts()[1].finger.id, 2);
  EXPECT_EQ(trace.contacts()[1].frame, 0U);
  EXPECT_EQ(trace.contacts()[2].finger.pos, (MTPoint{0.5F, 0.6F}));
  EXPECT_EQ(trace.contacts()[2].frame, 1U);
  trace.clear();
  EXPECT_TRUE(trace.contacts().empty());
  trace.add(fingers({finger(3, 0, 0)}));
  EXPECT_EQ(trace.contacts()[0].frame, 0U);
}

TEST(TouchTrace, IsCutAtAWholeFrame) {
  TouchTrace trace;
  for (std::size_t i = 0; i + 3 <= TouchTrace::kMaxContacts; i += 3) {
    trace.add(fingers({finger(1, 0, 0), finger(2, 0, 0), finger(3, 0, 0)}));
  }
  EXPECT_EQ(trace.contacts().size(), 639U);
  EXPECT_FALSE(trace.isCut());
  trace.add(fingers({finger(1, 0, 0), finger(2, 0, 0)}));
  EXPECT_EQ(trace.contacts().size(), 639U);
  EXPECT_TRUE(trace.isCut());
  trace.add(fingers({finger(1, 0, 0)}));
  EXPECT_EQ(trace.contacts().size(), 639U) << "what follows a gap is no part of it";
  trace.clear();
  EXPECT_FALSE(trace.isCut());
}

TEST(TouchTrace, ExactlyFullIsNotCut) {
  TouchTrace trace;
  for (std::size_t i = 0; i < TouchTrace::kMaxContacts; ++i) trace.add(fingers({finger(1, 0, 0)}));
  EXPECT_EQ(trace.contacts().size(), TouchTrace::kMaxContacts);
  EXPECT_FALSE(trace.isCut());
  trace.add(fingers({finger(1, 0, 0)}));
  EXPECT_TRUE(trace.isCut());
}

}  // namespace
}  // namespace velotap
