#include <gtest/gtest.h>

#include <cmath>

#include "tap_session_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

// The echo of three-finger drag.

class ThreeFingerDrag : public TapSession {
 protected:
  void turnOn(const char* domain = "com.apple.AppleMultitouchTrackpad", Value value = 1) {
    systemPreferences.set(domain, "TrackpadThreeFingerDrag", std::move(value));
  }
  bool swallows() { return engine.shouldSwallowSyntheticLeftClick(true, false); }
};

TEST_F(ThreeFingerDrag, IsSwallowedOnceAfterATap) {
  turnOn();
  tap(pad, 3);
  EXPECT_TRUE(swallows());
  EXPECT_FALSE(swallows()) << "one tap has one echo";
}

TEST_F(ThreeFingerDrag, IsSwallowedForHalfASecond) {
  turnOn();
  tap(pad, 3, 0.125);
  time.set(0.125 + 0.5);
  EXPECT_FALSE(swallows()) << "exactly half a second later it is late";
  time.set(std::nextafter(0.625, 0.0));
  EXPECT_TRUE(swallows()) << "and the late one closed nothing";
}

TEST_F(ThreeFingerDrag, CountsInEitherDomain) {
  turnOn("com.apple.driver.AppleBluetoothMultitouch.trackpad");
  tap(pad, 3);
  EXPECT_TRUE(swallows());
}

TEST_F(ThreeFingerDrag, MustBeOn) {
  tap(pad, 3);
  EXPECT_FALSE(swallows());
  turnOn("com.apple.AppleMultitouchTrackpad", 0);
  time.advance(1);
  tap(pad, 3);
  EXPECT_FALSE(swallows());
  turnOn("com.apple.AppleMultitouchTrackpad", "1");
  time.advance(1);
  tap(pad, 3);
  EXPECT_FALSE(swallows());
}

TEST_F(ThreeFingerDrag, ConcernsNeitherFourFingersNorMice) {
  turnOn();
  set("padTap4", true);
  tap(pad, 4);
  EXPECT_TRUE(clicked());
  EXPECT_FALSE(swallows());
  time.advance(1);
  tap(mouse, 3);
  EXPECT_TRUE(clicked());
  EXPECT_FALSE(swallows());
}

TEST_F(ThreeFingerDrag, OnlyAClickOpensTheWindow) {
  turnOn();
  tap(pad, 3, 0.4);
  EXPECT_FALSE(swallows());
  tap(pad, 3, 0.05);
  EXPECT_TRUE(swallows());
  tap(pad, 3, 0.05);
  EXPECT_EQ(outcomes(), (Lines{"tooLong", "click", "tooSoon"}));
  EXPECT_FALSE(swallows());
}

TEST_F(ThreeFingerDrag, StoppingClosesTheWindow) {
  turnOn();
  tap(pad, 3);
  start();
  EXPECT_FALSE(swallows());
}

}  // namespace
}  // namespace velotap
