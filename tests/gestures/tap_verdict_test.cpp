#include "gestures/tap_verdict.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velotap {
namespace {

constexpr double kNever = std::numeric_limits<double>::infinity();
constexpr TapLimits kLimits = {.duration = 0.25, .drift = 0.0625};
constexpr TapMeasurement kTap = {.duration = 0.1,
                                 .drift = 0.01,
                                 .pinching = false,
                                 .sinceNatural = kNever,
                                 .sinceEmulated = kNever};

double above(double value) {
  return std::nextafter(value, kNever);
}
double below(double value) {
  return std::nextafter(value, -kNever);
}

struct VerdictCase {
  const char* name;
  TapMeasurement tap;
  TapVerdict expected;
};

class JudgeTap : public ::testing::TestWithParam<VerdictCase> {};

TEST_P(JudgeTap, Verdict) {
  EXPECT_EQ(judgeTap(GetParam().tap, kLimits), GetParam().expected);
}

template <typename Change>
TapMeasurement with(Change change) {
  TapMeasurement tap = kTap;
  change(tap);
  return tap;
}

const VerdictCase kCases[] = {
    {"plain", kTap, TapVerdict::click},
    {"durationBelow", with([](auto& t) { t.duration = below(0.25); }), TapVerdict::click},
    {"durationExact", with([](auto& t) { t.duration = 0.25; }), TapVerdict::click},
    {"durationAbove", with([](auto& t) { t.duration = above(0.25); }), TapVerdict::tooLong},
    {"driftBelow", with([](auto& t) { t.drift = below(0.0625); }), TapVerdict::click},
    {"driftExact", with([](auto& t) { t.drift = 0.0625; }), TapVerdict::click},
    {"driftAbove", with([](auto& t) { t.drift = above(0.0625); }), TapVerdict::moved},
    {"pinching", with([](auto& t) { t.pinching = true; }), TapVerdict::pinching},
    {"naturalExact", with([](auto& t) { t.sinceNatural = 0.25; }), TapVerdict::besidePhysicalClick},
    {"naturalAbove", with([](auto& t) { t.sinceNatural = above(0.25); }), TapVerdict::click},
    {"naturalNow", with([](auto& t) { t.sinceNatural = 0; }), TapVerdict::besidePhysicalClick},
    {"emulatedExact", with([](auto& t) { t.sinceEmulated = 0.25 * 0.3; }), TapVerdict::tooSoon},
    {"emulatedAbove", with([](auto& t) { t.sinceEmulated = above(0.25 * 0.3); }),
     TapVerdict::click},
    {"tooLongBeforeMoved", with([](auto& t) {
       t.duration = 1;
       t.drift = 1;
       t.pinching = true;
     }),
     TapVerdict::tooLong},
    {"movedBeforePinching", with([](auto& t) {
       t.drift = 1;
       t.pinching = true;
       t.sinceEmulated = 0;
     }),
     TapVerdict::moved},
    {"pinchingBeforeClicks", with([](auto& t) {
       t.pinching = true;
       t.sinceNatural = 0;
       t.sinceEmulated = 0;
     }),
     TapVerdict::pinching},
    {"physicalClickBeforeTooSoon", with([](auto& t) {
       t.sinceNatural = 0;
       t.sinceEmulated = 0;
     }),
     TapVerdict::besidePhysicalClick},
    {"endlessDrift", with([](auto& t) { t.drift = kNever; }), TapVerdict::moved}};

INSTANTIATE_TEST_SUITE_P(Limits, JudgeTap, ::testing::ValuesIn(kCases),
                         [](const auto& tested) { return tested.param.name; });

TEST(JudgeTapWithoutDrift, AZeroLimitAcceptsOnlyTheMotionless) {
  const TapLimits strict = {.duration = 0.25, .drift = 0};
  TapMeasurement tap = kTap;
  tap.drift = 0;
  EXPECT_EQ(judgeTap(tap, strict), TapVerdict::click);
  tap.drift = above(0);
  EXPECT_EQ(judgeTap(tap, strict), TapVerdict::moved);
}

TEST(IsNearMiss, DurationUpToTwiceTheLimit) {
  TapMeasurement tap = kTap;
  tap.duration = 0.5;
  EXPECT_TRUE(isNearMiss(tap, kLimits));
  tap.duration = above(0.5);
  EXPECT_FALSE(isNearMiss(tap, kLimits));
}

TEST(IsNearMiss, DriftUpToFourTimesTheLimit) {
  TapMeasurement tap = kTap;
  tap.drift = 0.25;
  EXPECT_TRUE(isNearMiss(tap, kLimits));
  tap.drift = above(0.25);
  EXPECT_FALSE(isNearMiss(tap, kLimits));
}

TEST(IsNearMiss, DriftAtLeastUpToAFiftieth) {
  TapMeasurement tap = kTap;
  for (const double limit : {0.0, 0.001, 0.005}) {
    tap.drift = 0.02;
    EXPECT_TRUE(isNearMiss(tap, {.duration = 0.25, .drift = limit})) << limit;
    tap.drift = above(0.02);
    EXPECT_FALSE(isNearMiss(tap, {.duration = 0.25, .drift = limit})) << limit;
  }
  tap.drift = above(0.02);
  EXPECT_TRUE(isNearMiss(tap, {.duration = 0.25, .drift = 0.006}));
}

TEST(IsNearMiss, BothMustBeNear) {
  TapMeasurement tap = kTap;
  tap.duration = 1;
  tap.drift = 0.01;
  EXPECT_FALSE(isNearMiss(tap, kLimits));
  tap.duration = 0.4;
  tap.drift = 0.9;
  EXPECT_FALSE(isNearMiss(tap, kLimits));
}

}  // namespace
}  // namespace velotap
