#include "adapters/linux/clicks/wheel_gate.hpp"

#include <gtest/gtest.h>

namespace velotap::test {
namespace {

TEST(WheelGate, fewerFingersThanTheLimitScroll) {
  WheelGate gate;
  gate.setLimit(2);
  EXPECT_TRUE(gate.passes(0, 1));
  EXPECT_TRUE(gate.passes(1, 1));
  EXPECT_FALSE(gate.passes(2, 1));
  EXPECT_FALSE(gate.passes(3, 1));
}

TEST(WheelGate, twoFingersScrollWhereTheyMeanNothingElse) {
  WheelGate gate;
  gate.setLimit(3);
  EXPECT_TRUE(gate.passes(2, 1));
  EXPECT_FALSE(gate.passes(3, 1));
}

TEST(WheelGate, theLastFingerOfAGestureDoesNotScrollForAMoment) {
  WheelGate gate;
  EXPECT_FALSE(gate.passes(2, 10));
  EXPECT_FALSE(gate.passes(1, 10 + WheelGate::kLinger - 0.001));
  EXPECT_TRUE(gate.passes(1, 10 + WheelGate::kLinger));
}

TEST(WheelGate, aNewTouchScrollsAtOnce) {
  WheelGate gate;
  EXPECT_FALSE(gate.passes(3, 10));
  EXPECT_TRUE(gate.passes(0, 10.01));
  EXPECT_TRUE(gate.passes(1, 10.02));
}

}  // namespace
}  // namespace velotap::test
