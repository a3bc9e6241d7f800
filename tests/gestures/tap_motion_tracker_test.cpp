#include "gestures/tap_motion_tracker.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <vector>

#include "fingers.hpp"

namespace velotap {
namespace {

using test::finger;
using test::fingers;

TEST(TapMotionTracker, TheFirstFrameIsNoMovement) {
  TapMotionTracker tracker;
  EXPECT_EQ(tracker.maxDrift(), 0);
  tracker.update(fingers({finger(1, 0.2F, 0.3F), finger(2, 0.9F, 0.9F)}));
  EXPECT_EQ(tracker.maxDrift(), 0);
}

TEST(TapMotionTracker, DriftIsTheSumOfBothWays) {
  TapMotionTracker tracker;
  tracker.update(fingers({finger(1, 0.5F, 0.5F)}));
  tracker.update(fingers({finger(1, 0.25F, 0.625F)}));
  EXPECT_EQ(tracker.maxDrift(), 0.375);
}

TEST(TapMotionTracker, TheLargestDriftOfAnyFingerAtAnyTimeCounts) {
  TapMotionTracker tracker;
  tracker.update(fingers({finger(1, 0.5F, 0.5F), finger(2, 0.25F, 0.25F)}));
  tracker.update(fingers({finger(1, 0.5F, 0.75F), finger(2, 0.25F, 0.375F)}));
  EXPECT_EQ(tracker.maxDrift(), 0.25);
  tracker.update(fingers({finger(1, 0.5F, 0.5F), finger(2, 0.25F, 0.25F)}));
  EXPECT_EQ(tracker.maxDrift(), 0.25) << "coming back does not undo it";
}

TEST(TapMotionTracker, DriftIsMeasuredFromTheStartNotAlongTheWay) {
  TapMotionTracker tracker;
  for (const float x : {0.5F, 0.5625F, 0.5F, 0.4375F, 0.5F}) {
    tracker.update(fingers({finger(1, x, 0.5F)}));
  }
  EXPECT_EQ(tracker.maxDrift(), 0.0625);
}

TEST(TapMotionTracker, DriftIsComputedInSinglePrecision) {
  TapMotionTracker tracker;
  tracker.update(fingers({finger(1, 0.1F, 0.1F)}));
  tracker.update(fingers({finger(1, 0.13F, 0.12F)}));
  const float x = 0.13F - 0.1F;
  const float y = 0.12F - 0.1F;
  EXPECT_EQ(tracker.maxDrift(), static_cast<double>(x + y));
}

TEST(TapMotionTracker, AFingerThatLandsUnderANewNameStartsAfresh) {
  TapMotionTracker tracker;
  tracker.update(fingers({finger(1, 0.1F, 0.1F)}));
  tracker.update(fingers({finger(2, 0.9F, 0.9F)}));
  EXPECT_EQ(tracker.maxDrift(), 0);
  tracker.update(fingers({finger(1, 0.1F, 0.35F)}));
  EXPECT_EQ(tracker.maxDrift(), static_cast<double>(0.35F - 0.1F)) << "the same name goes on";
}

TEST(TapMotionTracker, ResetForgetsPositionsAndDrift) {
  TapMotionTracker tracker;
  tracker.update(fingers({finger(1, 0.1F, 0.1F)}));
  tracker.update(fingers({finger(1, 0.9F, 0.1F)}));
  tracker.reset();
  EXPECT_EQ(tracker.maxDrift(), 0);
  tracker.update(fingers({finger(1, 0.5F, 0.5F)}));
  EXPECT_EQ(tracker.maxDrift(), 0);
}

TEST(TapMotionTracker, HugePositionsAreFarAwayNotUndefined) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  TapMotionTracker tracker;
  tracker.update(fingers({finger(1, kLargest, kLargest)}));
  tracker.update(fingers({finger(1, -kLargest, -kLargest)}));
  EXPECT_EQ(tracker.maxDrift(), std::numeric_limits<double>::infinity());
}

TEST(TapMotionTracker, SixtyFourNamesAreRememberedTogether) {
  TapMotionTracker tracker;
  for (int id = 0; id < 64; ++id) tracker.update(fingers({finger(id, 0.5F, 0.5F)}));
  tracker.update(fingers({finger(0, 0.5F, 0.75F)}));
  EXPECT_EQ(tracker.maxDrift(), 0.25);
}

TEST(TapMotionTracker, BeyondThatTheFingersThatAreDownAreNeverForgotten) {
  TapMotionTracker tracker;
  tracker.update(fingers({finger(-1, 0.5F, 0.5F)}));
  for (int id = 0; id < 1000; ++id) {
    tracker.update(fingers({finger(id, 0.5F, 0.5F), finger(-1, 0.5F, 0.5F)}));
  }
  EXPECT_EQ(tracker.maxDrift(), 0);
  tracker.update(fingers({finger(-1, 0.5F, 0.875F)}));
  EXPECT_EQ(tracker.maxDrift(), 0.375);
}

// As long as a session sees no more names than are remembered, order and company do not matter.
TEST(TapMotionTracker, AgreesWithAPlainModel) {
  std::mt19937 random(11);
  for (int session = 0; session < 300; ++session) {
    TapMotionTracker tracker;
    std::map<std::int32_t, MTPoint> starts;
    double expected = 0;
    for (int frame = 0; frame < 30; ++frame) {
      Fingers down;
      std::vector<std::int32_t> ids(64);
      for (int i = 0; i < 64; ++i) ids[static_cast<std::size_t>(i)] = i * 7 - 100;
      std::shuffle(ids.begin(), ids.end(), random);
      const auto n = random() % 17;
      for (std::size_t i = 0; i < n; ++i) {
        const float x = static_cast<float>(random() % 1000) / 1000;
        const float y = static_cast<float>(random() % 1000) / 1000;
        down.push(finger(ids[i], x, y));
        const auto [start, isNew] = starts.emplace(ids[i], MTPoint{x, y});
        const float drift = std::abs(x - start->second.x) + std::abs(y - start->second.y);
        if (!isNew) expected = std::max(expected, static_cast<double>(drift));
      }
      tracker.update(down);
      ASSERT_EQ(tracker.maxDrift(), expected);
    }
  }
}

}  // namespace
}  // namespace velotap
