#include "gestures/device_state.hpp"

#include <gtest/gtest.h>

#include "fingers.hpp"

namespace velotap {
namespace {

TEST(FingerCountSet, HoldsWhatWasInserted) {
  FingerCountSet counts;
  for (int n = 0; n <= 16; ++n) EXPECT_FALSE(counts.contains(n));
  counts.insert(3);
  counts.insert(16);
  for (int n = 0; n <= 16; ++n) EXPECT_EQ(counts.contains(n), n == 3 || n == 16) << n;
  counts.clear();
  EXPECT_FALSE(counts.contains(3));
}

TEST(DeviceState, StartsUnreadyAndEmpty) {
  const DeviceState state;
  EXPECT_EQ(state.count, 0);
  EXPECT_FALSE(state.readyForContact);
  EXPECT_EQ(state.singleFingerPos, MTPoint{});
  EXPECT_FALSE(state.sessionStart);
  EXPECT_FALSE(state.targetBundleID);
  EXPECT_FALSE(state.swipeEnabledAtStart);
  EXPECT_EQ(state.tapLimitsAtStart.duration, 0.3);
  EXPECT_EQ(state.tapLimitsAtStart.drift, 0.05);
  EXPECT_EQ(state.maxFingers, 0);
  EXPECT_FALSE(state.sessionConsumedByClick);
  EXPECT_FALSE(state.processedEmptyFrame);
}

DeviceState inMidSession() {
  DeviceState state;
  state.deviceClass = DeviceClass::magicMouse;
  state.count = 2;
  state.readyForContact = true;
  state.singleFingerPos = {0.25F, 0.5F};
  state.sessionStart = 12;
  state.targetBundleID = AppId::intern("com.example.editor");
  state.enabledTapFingerCounts.insert(3);
  state.swipeEnabledAtStart = true;
  state.tapLimitsAtStart = {.duration = 1, .drift = 0.5};
  state.maxFingers = 3;
  for (const float x : {0.0F, 0.5F}) {
    const auto three = test::fingers(
        {test::finger(1, x, 0.5F), test::finger(2, x, 0.5F), test::finger(3, x, 0.5F)});
    state.tapMotion.update(three);
    state.swipe.update(three);
  }
  state.sessionConsumedByClick = true;
  state.processedEmptyFrame = true;
  return state;
}

TEST(DeviceState, ResetClearsTheSessionAndLeavesTheRest) {
  DeviceState state = inMidSession();
  state.resetFinishedSession();
  EXPECT_FALSE(state.targetBundleID);
  EXPECT_FALSE(state.enabledTapFingerCounts.contains(3));
  EXPECT_FALSE(state.swipeEnabledAtStart);
  EXPECT_EQ(state.tapMotion.maxDrift(), 0);
  EXPECT_FALSE(state.swipe.isValid());
  EXPECT_EQ(state.swipe.dx(), 0);
  EXPECT_FALSE(state.sessionConsumedByClick);

  EXPECT_EQ(state.deviceClass, DeviceClass::magicMouse);
  EXPECT_EQ(state.count, 2);
  EXPECT_TRUE(state.readyForContact);
  EXPECT_EQ(state.singleFingerPos, (MTPoint{0.25F, 0.5F}));
  EXPECT_EQ(state.sessionStart, 12) << "whoever ends a session clears it";
  EXPECT_EQ(state.tapLimitsAtStart.duration, 1);
  EXPECT_EQ(state.tapLimitsAtStart.drift, 0.5);
  EXPECT_EQ(state.maxFingers, 3);
  EXPECT_TRUE(state.processedEmptyFrame);
}

TEST(DeviceState, AbandoningAlsoEndsTheSession) {
  DeviceState state = inMidSession();
  state.abandonSession();
  EXPECT_FALSE(state.sessionStart);
  EXPECT_FALSE(state.targetBundleID);
  EXPECT_TRUE(state.readyForContact);
}

}  // namespace
}  // namespace velotap
