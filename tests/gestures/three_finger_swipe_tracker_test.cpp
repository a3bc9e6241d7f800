#include "gestures/three_finger_swipe_tracker.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "fingers.hpp"

namespace velotap {
namespace {

using test::finger;
using test::fingers;

// Positions are multiples of 1/64, so that means and differences of three are exact enough to be
// compared at a limit.
Fingers three(float dx, float dy, std::int32_t first = 1) {
  return fingers({finger(first, 0.25F + dx, 0.5F + dy), finger(first + 1, 0.5F + dx, 0.5F + dy),
                  finger(first + 2, 0.75F + dx, 0.5F + dy)});
}
Fingers two(float dx) {
  return fingers({finger(1, 0.25F + dx, 0.5F), finger(2, 0.5F + dx, 0.5F)});
}
Fingers four(float dx) {
  Fingers result = three(dx, 0);
  result.push(finger(9, 0.1F, 0.1F));
  return result;
}

SwipeVerdict judge(const ThreeFingerSwipeTracker& tracker, double duration = 0.4,
                   int maxFingers = 3) {
  return judgeSwipe(tracker, maxFingers, duration);
}

TEST(ThreeFingerSwipeTracker, CentroidIsTheMeanInDoublePrecision) {
  const Point mean = ThreeFingerSwipeTracker::centroid(
      fingers({finger(1, 0.1F, 0.2F), finger(2, 0.3F, 0.4F), finger(3, 0.6F, 0.9F)}));
  const auto wide = [](float value) { return static_cast<double>(value); };
  EXPECT_DOUBLE_EQ(mean.x, (wide(0.1F) + wide(0.3F) + wide(0.6F)) / 3);
  EXPECT_DOUBLE_EQ(mean.y, (wide(0.2F) + wide(0.4F) + wide(0.9F)) / 3);
}

TEST(ThreeFingerSwipeTracker, NothingHappensBelowThreeFingers) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(two(0));
  tracker.update(two(0.4F));
  EXPECT_FALSE(tracker.isValid());
  EXPECT_EQ(tracker.dx(), 0);
  EXPECT_EQ(judge(tracker), SwipeVerdict::none);
}

TEST(ThreeFingerSwipeTracker, ASwipeToTheRightIsBackAndToTheLeftIsForward) {
  for (const float way : {1.0F, -1.0F}) {
    ThreeFingerSwipeTracker tracker;
    tracker.update(three(0, 0));
    EXPECT_TRUE(tracker.isValid());
    tracker.update(three(way * 0.3125F, 0.125F));
    EXPECT_DOUBLE_EQ(tracker.dx(), way * 0.3125);
    EXPECT_DOUBLE_EQ(tracker.dy(), 0.125);
    EXPECT_EQ(judge(tracker), way > 0 ? SwipeVerdict::back : SwipeVerdict::forward);
  }
}

TEST(ThreeFingerSwipeTracker, DisplacementIsTheLatestNotTheLargest) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(three(0, 0));
  tracker.update(three(0.5F, 0));
  tracker.update(three(0.125F, 0));
  EXPECT_DOUBLE_EQ(tracker.dx(), 0.125);
  EXPECT_EQ(judge(tracker), SwipeVerdict::none);
}

TEST(ThreeFingerSwipeTracker, TravelMustExceedAQuarter) {
  for (const float way : {1.0F, -1.0F}) {
    ThreeFingerSwipeTracker tracker;
    tracker.update(three(0, 0));
    tracker.update(three(way * 0.25F, 0));
    ASSERT_EQ(std::abs(tracker.dx()), 0.25);
    EXPECT_EQ(judge(tracker), SwipeVerdict::none) << "exactly a quarter is not enough";
    tracker.update(three(way * 0.2501F, 0));
    EXPECT_NE(judge(tracker), SwipeVerdict::none);
    tracker.update(three(way * 0.2499F, 0));
    EXPECT_EQ(judge(tracker), SwipeVerdict::none);
  }
}

TEST(ThreeFingerSwipeTracker, TwiceTheHeightMustBeLessThanTheTravel) {
  for (const float up : {1.0F, -1.0F}) {
    ThreeFingerSwipeTracker tracker;
    tracker.update(three(0, 0));
    tracker.update(three(0.375F, up * 0.1875F));
    ASSERT_EQ(2 * std::abs(tracker.dy()), std::abs(tracker.dx()));
    EXPECT_EQ(judge(tracker), SwipeVerdict::none) << "exactly half is too steep";
    tracker.update(three(0.375F, up * 0.187F));
    EXPECT_EQ(judge(tracker), SwipeVerdict::back);
    tracker.update(three(0.375F, up * 0.188F));
    EXPECT_EQ(judge(tracker), SwipeVerdict::none);
  }
}

TEST(ThreeFingerSwipeTracker, DurationMustBeBelowSixTenths) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(three(0, 0));
  tracker.update(three(0.375F, 0));
  EXPECT_EQ(judge(tracker, std::nextafter(0.6, 0.0)), SwipeVerdict::back);
  EXPECT_EQ(judge(tracker, 0.6), SwipeVerdict::none);
  EXPECT_EQ(judge(tracker, 0.601), SwipeVerdict::none);
}

TEST(ThreeFingerSwipeTracker, TheSessionMustHaveSeenExactlyThreeFingers) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(three(0, 0));
  tracker.update(three(0.375F, 0));
  EXPECT_EQ(judge(tracker, 0.4, 2), SwipeVerdict::none);
  EXPECT_EQ(judge(tracker, 0.4, 3), SwipeVerdict::back);
  EXPECT_EQ(judge(tracker, 0.4, 4), SwipeVerdict::none);
}

TEST(ThreeFingerSwipeTracker, AThirdFingerStartsItWhereItArrives) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(two(-0.25F));
  tracker.update(two(0));
  tracker.update(three(0, 0));
  tracker.update(three(0.3125F, 0));
  EXPECT_DOUBLE_EQ(tracker.dx(), 0.3125);
  EXPECT_EQ(judge(tracker), SwipeVerdict::back);
}

TEST(ThreeFingerSwipeTracker, LiftingKeepsWhatWasMeasuredBefore) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(three(0, 0));
  tracker.update(three(0.3125F, 0));
  tracker.update(two(-0.1F));
  tracker.update(fingers({finger(1, 0.9F, 0.9F)}));
  EXPECT_TRUE(tracker.isValid());
  EXPECT_DOUBLE_EQ(tracker.dx(), 0.3125);
  EXPECT_EQ(judge(tracker), SwipeVerdict::back);
}

TEST(ThreeFingerSwipeTracker, ThreeFingersAgainAfterLiftingSpoilIt) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(three(0, 0));
  tracker.update(three(0.3125F, 0));
  tracker.update(two(0.3125F));
  tracker.update(three(0.3125F, 0));
  EXPECT_FALSE(tracker.isValid());
  tracker.update(two(0));
  EXPECT_FALSE(tracker.isValid()) << "spoilt for good";
}

TEST(ThreeFingerSwipeTracker, AFourthFingerSpoilsItWhenever) {
  ThreeFingerSwipeTracker during;
  during.update(three(0, 0));
  during.update(three(0.3125F, 0));
  during.update(four(0.3125F));
  EXPECT_FALSE(during.isValid());
  during.update(three(0.375F, 0));
  EXPECT_FALSE(during.isValid());

  ThreeFingerSwipeTracker after;
  after.update(three(0, 0));
  after.update(three(0.3125F, 0));
  after.update(two(0.3125F));
  after.update(four(0.3125F));
  EXPECT_FALSE(after.isValid());

  ThreeFingerSwipeTracker before;
  before.update(four(0));
  before.update(three(0, 0));
  before.update(three(0.3125F, 0));
  EXPECT_FALSE(before.isValid());
  EXPECT_EQ(before.dx(), 0) << "it never began";
}

TEST(ThreeFingerSwipeTracker, AnotherFingerInsteadOfOneSpoilsIt) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(three(0, 0, 1));
  tracker.update(three(0.3125F, 0, 1));
  tracker.update(three(0.3125F, 0, 2));
  EXPECT_FALSE(tracker.isValid());
  EXPECT_DOUBLE_EQ(tracker.dx(), 0.3125);
  tracker.update(three(0.375F, 0, 1));
  EXPECT_FALSE(tracker.isValid());
}

TEST(ThreeFingerSwipeTracker, TheOrderOfTheFingersDoesNotMatter) {
  constexpr auto kMin = std::numeric_limits<std::int32_t>::min();
  constexpr auto kMax = std::numeric_limits<std::int32_t>::max();
  const std::int32_t ids[] = {kMax, kMin, 0};
  const int orders[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
  for (const auto& first : orders) {
    for (const auto& second : orders) {
      ThreeFingerSwipeTracker tracker;
      Fingers from;
      Fingers to;
      for (int i = 0; i < 3; ++i) {
        from.push(finger(ids[first[i]], 0.25F, 0.5F));
        to.push(finger(ids[second[i]], 0.625F, 0.5F));
      }
      tracker.update(from);
      tracker.update(to);
      EXPECT_EQ(judge(tracker), SwipeVerdict::back);
    }
  }
}

TEST(ThreeFingerSwipeTracker, ResetStartsOver) {
  ThreeFingerSwipeTracker tracker;
  tracker.update(four(0));
  tracker.reset();
  EXPECT_FALSE(tracker.isValid());
  tracker.update(three(0, 0));
  tracker.update(three(-0.375F, 0));
  EXPECT_EQ(judge(tracker), SwipeVerdict::forward);
}

TEST(ThreeFingerSwipeTracker, ExtremePositionsGiveNoSwipeOutOfNothing) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  ThreeFingerSwipeTracker tracker;
  const auto at = [](float p) {
    return fingers({finger(1, p, p), finger(2, p, p), finger(3, p, p)});
  };
  tracker.update(at(kLargest));
  tracker.update(at(-kLargest));
  EXPECT_TRUE(std::isfinite(tracker.dx()));
  EXPECT_EQ(judge(tracker), SwipeVerdict::none) << "as high as wide";
}

}  // namespace
}  // namespace velotap
