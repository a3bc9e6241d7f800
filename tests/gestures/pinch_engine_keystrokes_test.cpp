#include <gtest/gtest.h>

#include "pinch_engine_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

class KeystrokeZoom : public PinchEngineTest {
 protected:
  KeystrokeZoom() { context.usesKeystrokeZoom = true; }
  int presses(const char* line) {
    int count = 0;
    for (const std::string& event : posted.take()) count += event == line ? 1 : 0;
    return count;
  }
  static constexpr const char* kIn = "key 24 down flags=1048576";
  static constexpr const char* kOut = "key 27 down flags=1048576";
};

TEST_F(KeystrokeZoom, PostsKeystrokesAndNoMagnifyEvent) {
  beginPinch();
  EXPECT_EQ(said.take(), Lines{"pinch began (d0=20.0mm, keystrokes=true)"});
  for (const double distance : {30.0, 40.0, 50.0}) process(pair(distance));
  EXPECT_EQ(posted.take().front(), kIn);
  lift();
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_EQ(said.take(), Lines{"pinch ended"});
}

TEST_F(KeystrokeZoom, OnceForEachTwelveHundredthsOfAccumulatedStep) {
  beginPinch();
  // Every one of these frames asks for more than the largest step, a tenth.
  double distance = 25;
  std::vector<int> perFrame;
  for (int i = 0; i < 5; ++i) {
    distance *= 1.5;
    process(pair(distance));
    perFrame.push_back(presses(kIn));
  }
  EXPECT_EQ(perFrame, (std::vector{0, 1, 1, 1, 1})) << "never more than one at a time";
}

TEST_F(KeystrokeZoom, OutwardAndInwardCancelOut) {
  beginPinch();
  process(pair(50));
  EXPECT_EQ(presses(kIn), 0) << "a tenth is not enough";
  for (int i = 0; i < 3; ++i) process(pair(50 - 16 * (i + 1)));
  EXPECT_EQ(presses(kOut), 1) << "0.1 - 0.1 · 3 is two tenths the other way";
}

TEST_F(KeystrokeZoom, TheRemainderDoesNotOutliveTheGesture) {
  beginPinch();
  process(pair(50));
  lift();
  beginPinch();
  process(pair(50));
  EXPECT_EQ(presses(kIn), 0);
}

TEST_F(KeystrokeZoom, UsesTheKeysOfTheLayout) {
  keyboardLayout.select({{{50, "+"}}});
  keyCodes.start();
  beginPinch();
  for (const double distance : {40.0, 60.0, 90.0}) process(pair(distance));
  EXPECT_EQ(posted.take().front(), "key 50 down flags=1048576");
}

TEST_F(KeystrokeZoom, IsDecidedWhenThePinchBegins) {
  context.usesKeystrokeZoom = false;
  process(pair(20));
  context.usesKeystrokeZoom = true;
  process(pair(25));
  context.usesKeystrokeZoom = false;
  for (const double distance : {40.0, 60.0, 90.0}) process(pair(distance));
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_FALSE(posted.take().empty());
}

TEST_F(KeystrokeZoom, ACancelPostsNothingEither) {
  beginPinch();
  process(three());
  EXPECT_EQ(gestures(), Lines{});
  EXPECT_EQ(said.take().back(), "pinch cancelled");
}

TEST_F(KeystrokeZoom, RotationsAreStillEvents) {
  beginRotation();
  lift();
  EXPECT_EQ(gestures(), (Lines{"rotate 1 0.000", "rotate 4 0.000"}));
}

}  // namespace
}  // namespace velotap
