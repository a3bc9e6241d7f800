#include "gestures/pinch_tracking.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "fingers.hpp"

namespace velotap {
namespace {

using test::finger;

template <typename T>
T above(T value) {
  return std::nextafter(value, std::numeric_limits<T>::infinity());
}
template <typename T>
T below(T value) {
  return std::nextafter(value, -std::numeric_limits<T>::infinity());
}

Finger atMillimetres(std::int32_t id, float x, float y) {
  Finger result = finger(id, 0.5F, 0.5F);
  result.mmPos = {x, y};
  return result;
}

TEST(PinchContact, MustBeLargeAndDense) {
  struct Case {
    float size, density;
    bool expected;
  };
  const Case cases[] = {
      {1, 1, true},
      {0.25F, 1, false},
      {above(0.25F), 1, true},
      {below(0.25F), 1, false},
      {1, 0.375F, false},
      {1, above(0.375F), true},
      {1, below(0.375F), false},
      {0, 0, false},
      {-1, -1, false},
  };
  for (const Case& c : cases) {
    Finger f = finger(1, 0.5F, 0.5F);
    f.zTotal = c.size;
    f.zDensity = c.density;
    EXPECT_EQ(isPinchContact(f), c.expected) << c.size << " " << c.density;
  }
}

TEST(MeasurePair, OrdersByIdentifierWhateverTheOrderGiven) {
  const Finger low = atMillimetres(-3, 10, 20);
  const Finger high = atMillimetres(8, 13, 24);
  for (const PinchPair& pair : {measurePair(low, high), measurePair(high, low)}) {
    EXPECT_EQ(pair.id1, -3);
    EXPECT_EQ(pair.id2, 8);
    EXPECT_DOUBLE_EQ(pair.distance, 5);
    EXPECT_EQ(pair.midpoint, (Point{11.5, 22}));
    EXPECT_DOUBLE_EQ(pair.angle(), std::atan2(4.0, 3.0) * 180 / 3.14159265358979323846);
  }
}

TEST(MeasurePair, TheDistanceIsRightToTheLastDigit) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> place(0, 60);
  for (int i = 0; i < 1000; ++i) {
    const Finger a = atMillimetres(1, place(random), place(random));
    const Finger b = atMillimetres(2, place(random), place(random));
    const auto wide = [](float value) { return static_cast<double>(value); };
    EXPECT_EQ(measurePair(a, b).distance,
              std::hypot(wide(b.mmPos.x) - wide(a.mmPos.x), wide(b.mmPos.y) - wide(a.mmPos.y)));
  }
}

TEST(MeasurePair, AnglesGrowCounterClockwise) {
  const Finger centre = atMillimetres(1, 0, 0);
  EXPECT_DOUBLE_EQ(measurePair(centre, atMillimetres(2, 1, 0)).angle(), 0);
  EXPECT_DOUBLE_EQ(measurePair(centre, atMillimetres(2, 0, 1)).angle(), 90);
  EXPECT_DOUBLE_EQ(measurePair(centre, atMillimetres(2, -1, 0)).angle(), 180);
  EXPECT_DOUBLE_EQ(measurePair(centre, atMillimetres(2, 0, -1)).angle(), -90);
  EXPECT_DOUBLE_EQ(measurePair(centre, atMillimetres(2, 0, 0)).angle(), 0) << "one on the other";
}

TEST(MeasurePair, ExtremePositionsStayFinite) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  const PinchPair pair =
      measurePair(atMillimetres(1, -kLargest, -kLargest), atMillimetres(2, kLargest, kLargest));
  EXPECT_TRUE(std::isfinite(pair.distance));
  EXPECT_EQ(pair.midpoint, (Point{0, 0}));
  EXPECT_DOUBLE_EQ(pair.angle(), 45);
}

struct StartCase {
  float x, vx, vy;
  bool acceptable;
};

TEST(MeasurePair, IsAcceptableOnlyAwayFromTheSidesAndSlow) {
  const StartCase cases[] = {
      {0.5F, 0, 0, true},          {0.05F, 0, 0, false},    {above(0.05F), 0, 0, true},
      {below(0.05F), 0, 0, false}, {0.95F, 0, 0, false},    {below(0.95F), 0, 0, true},
      {above(0.95F), 0, 0, false}, {0.5F, 4, 0, false},     {0.5F, below(4.0F), 0, true},
      {0.5F, -2, 2, false},        {0.5F, -2, -1.9F, true}, {0.5F, 0, -4, false},
  };
  for (const StartCase& c : cases) {
    Finger judged = finger(1, c.x, 0.5F);
    judged.velocity = {c.vx, c.vy};
    const Finger good = finger(2, 0.5F, 0.5F);
    EXPECT_EQ(measurePair(judged, good).acceptable, c.acceptable)
        << c.x << " " << c.vx << " " << c.vy;
    EXPECT_EQ(measurePair(good, judged).acceptable, c.acceptable) << "either finger counts";
  }
}

TEST(MeasurePair, TheUpperAndLowerEdgesDoNotMatter) {
  EXPECT_TRUE(measurePair(finger(1, 0.5F, 0), finger(2, 0.5F, 1)).acceptable);
}

TEST(AngleChange, GoesTheShortWayRound) {
  struct Case {
    double from, to, expected;
  };
  const Case cases[] = {{0, 10, 10},      {10, 0, -10},    {170, -170, 20}, {-170, 170, -20},
                        {-90, 90, 180},   {90, -90, -180}, {0, 180, 180},   {0, -180, -180},
                        {-179, 180, -1},  {180, -179, 1},  {-180, 180, 0},  {45, 45, 0},
                        {-100, 81, -179}, {100, -81, 179}};
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(angleChange(c.from, c.to), c.expected) << c.from << " to " << c.to;
  }
}

TEST(PinchMagnificationTracker, SmoothsRelativeSteps) {
  PinchMagnificationTracker tracker{.lastDistance = 50, .smoothed = 0};
  EXPECT_DOUBLE_EQ(tracker.update(52, 1).value(), 0.5 * (2.0 / 50));
  EXPECT_DOUBLE_EQ(tracker.lastDistance, 52);
  EXPECT_DOUBLE_EQ(tracker.update(52, 1).value(), 0.25 * (2.0 / 50));
  const double before = tracker.smoothed;
  EXPECT_DOUBLE_EQ(tracker.update(51, 1).value(), 0.5 * before + 0.5 * (-1.0 / 52));
}

TEST(PinchMagnificationTracker, SensitivityScalesTheStepNotTheMemory) {
  PinchMagnificationTracker tracker{.lastDistance = 50, .smoothed = 0};
  EXPECT_DOUBLE_EQ(tracker.update(51, 2).value(), 2 * 0.5 * (1.0 / 50));
  EXPECT_DOUBLE_EQ(tracker.smoothed, 0.5 * (1.0 / 50));
}

TEST(PinchMagnificationTracker, StepsStayWithinATenth) {
  PinchMagnificationTracker tracker{.lastDistance = 50, .smoothed = 0};
  EXPECT_EQ(tracker.update(100, 1), 0.1);
  EXPECT_DOUBLE_EQ(tracker.smoothed, 0.5) << "only what is posted is limited";
  tracker = {.lastDistance = 50, .smoothed = 0};
  EXPECT_EQ(tracker.update(10, 1), -0.1);
  tracker = {.lastDistance = 50, .smoothed = 0};
  EXPECT_DOUBLE_EQ(tracker.update(60, 1).value(), 0.1) << "exactly a tenth";
  tracker = {.lastDistance = 50, .smoothed = 0};
  EXPECT_EQ(tracker.update(51, 5).value(), 0.5 * (1.0 / 50) * 5);
}

TEST(PinchMagnificationTracker, ATinyDistanceStartsAfresh) {
  for (const double last : {0.0, 0.5}) {
    PinchMagnificationTracker tracker{.lastDistance = last, .smoothed = 0.3};
    EXPECT_EQ(tracker.update(20, 1), std::nullopt);
    EXPECT_EQ(tracker.lastDistance, 20);
    EXPECT_EQ(tracker.smoothed, 0);
  }
  for (const double now : {0.0, 0.5}) {
    PinchMagnificationTracker tracker{.lastDistance = 20, .smoothed = 0.3};
    EXPECT_EQ(tracker.update(now, 1), std::nullopt);
    EXPECT_EQ(tracker.lastDistance, now);
    EXPECT_EQ(tracker.smoothed, 0);
  }
  PinchMagnificationTracker tracker{.lastDistance = above(0.5), .smoothed = 0};
  EXPECT_TRUE(tracker.update(above(0.5), 1));
}

struct OnsetCase {
  const char* name;
  PinchMovement movement;
  bool pinch, rotate;
  PinchOnset expected;
};

class JudgeOnset : public ::testing::TestWithParam<OnsetCase> {};

TEST_P(JudgeOnset, Onset) {
  const OnsetCase& c = GetParam();
  EXPECT_EQ(judgeOnset(c.movement, c.pinch, c.rotate), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, JudgeOnset,
    ::testing::Values(
        OnsetCase{"nothing", {0, 0, 0}, true, true, PinchOnset::none},
        OnsetCase{"spread5", {0, 5, 0}, true, true, PinchOnset::pinch},
        OnsetCase{"spreadExactly3", {0, 3, 0}, true, true, PinchOnset::none},
        OnsetCase{"spreadJustOver3", {0, above(3.0), 0}, true, true, PinchOnset::pinch},
        OnsetCase{"drift4Of5", {4, 5, 0}, true, true, PinchOnset::reject},
        OnsetCase{"driftExactly", {4, 6, 0}, true, true, PinchOnset::reject},
        OnsetCase{"driftJustBelow", {below(4.0), 6, 0}, true, true, PinchOnset::pinch},
        OnsetCase{"spreadWithPinchOff", {0, 5, 0}, false, true, PinchOnset::reject},
        OnsetCase{"spreadWithPinchOffAndTurn", {0, 5, 40}, false, true, PinchOnset::reject},
        OnsetCase{"spreadWithBothOff", {0, 5, 0}, false, false, PinchOnset::reject},
        OnsetCase{"turn13", {0, 0, 13}, true, true, PinchOnset::rotate},
        OnsetCase{"turnBack13", {0, 0, -13}, true, true, PinchOnset::rotate},
        OnsetCase{"turnExactly12", {0, 0, 12}, true, true, PinchOnset::none},
        OnsetCase{"turnBackExactly12", {0, 0, -12}, true, true, PinchOnset::none},
        OnsetCase{"turnJustOver12", {0, 0, above(12.0)}, true, true, PinchOnset::rotate},
        OnsetCase{"turnWithSpread3", {0, 3, 13}, true, true, PinchOnset::rotate},
        OnsetCase{"turnWithDrift3", {3, 0, 13}, true, true, PinchOnset::none},
        OnsetCase{"turnWithDriftBelow3", {below(3.0), 0, 13}, true, true, PinchOnset::rotate},
        OnsetCase{"turnWithRotateOff", {0, 0, 90}, true, false, PinchOnset::none},
        OnsetCase{"turnWithPinchOff", {0, 0, 13}, false, true, PinchOnset::rotate},
        OnsetCase{"spreadWinsOverTurn", {0, 5, 40}, true, true, PinchOnset::pinch}),
    [](const auto& tested) { return tested.param.name; });

TEST(TakeZoomKeystrokes, OneForEachFullStep) {
  struct Case {
    double accumulated;
    int expected;
    double left;
  };
  const Case cases[] = {{0, 0, 0},       {0.12, 0, 0.12},    {above(0.12), 1, 0},
                        {0.13, 1, 0.01}, {-0.12, 0, -0.12},  {-0.13, -1, -0.01},
                        {0.25, 2, 0.01}, {-0.37, -3, -0.01}, {0.24, 1, 0.12}};
  for (const Case& c : cases) {
    double accumulator = c.accumulated;
    EXPECT_EQ(takeZoomKeystrokes(accumulator), c.expected) << c.accumulated;
    EXPECT_NEAR(accumulator, c.left, 1e-12) << c.accumulated;
  }
}

}  // namespace
}  // namespace velotap
