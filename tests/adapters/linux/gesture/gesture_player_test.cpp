#include "adapters/linux/gesture/gesture_player.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "desktop_view.hpp"

namespace velotap {
namespace {

using enum GestureKind;
using enum GesturePhase;

/// A player with time, the record of its frames, and what a desktop made of them.
class Stage {
 public:
  struct Played {
    double time;
    PadFrame frame;
  };

  void send(GestureKind kind, GesturePhase phase, double value = 0) {
    player.handle(kind, phase, value, now);
  }
  /// Lets `seconds` pass, playing each frame when it is due.
  void pass(double seconds) {
    const double end = now + seconds;
    while (true) {
      const auto due = player.deadline();
      if (!due || *due > end) break;
      now = std::max(now, *due);
      take(player.step(now));
      ASSERT_LT(++steps, 100'000);
      ASSERT_TRUE(!player.deadline() || *player.deadline() > now) << "a deadline that stands still";
    }
    now = end;
  }
  void settle() { pass(10); }
  /// Changes every 8 ms, as a device of 125 frames a second gives them.
  void changes(GestureKind kind, const std::vector<double>& values, double apart = 0.008) {
    for (const double value : values) {
      send(kind, changed, value);
      pass(apart);
    }
  }
  void take(const std::optional<PadFrame>& frame) {
    if (!frame) return;
    played.push_back({now, *frame});
    desktop.see(*frame, now);
  }
  [[nodiscard]] int contactsDown() const {
    if (played.empty()) return 0;
    const auto& contacts = played.back().frame.contacts;
    return (contacts[0] ? 1 : 0) + (contacts[1] ? 1 : 0);
  }

  GesturePlayer player;
  double now = 100;
  std::vector<Played> played;
  DesktopView desktop;
  int steps = 0;
};

std::vector<double> repeated(double value, int times) {
  return std::vector<double>(static_cast<std::size_t>(times), value);
}

double product(const std::vector<DesktopView::Gesture>& gestures) {
  double all = 1;
  for (const auto& gesture : gestures) all *= gesture.scale;
  return all;
}

double stepOf(double scale, int frames) {
  return std::pow(scale, 1.0 / frames) - 1;
}

TEST(GesturePlayer, restsWithoutADeadline) {
  GesturePlayer player;
  EXPECT_FALSE(player.deadline());
  EXPECT_FALSE(player.step(1));
  EXPECT_FALSE(player.touching());
}

TEST(GesturePlayer, landsFortyMillimetresApartAndMovesTwoOutwards) {
  Stage stage;
  stage.send(magnify, began);
  stage.pass(0.020);
  ASSERT_EQ(stage.played.size(), 2U);
  const auto distance = [](const PadFrame& f) {
    return std::hypot(f.contacts[1]->x - f.contacts[0]->x, f.contacts[1]->y - f.contacts[0]->y);
  };
  EXPECT_NEAR(distance(stage.played[0].frame), 40, 1e-9);
  EXPECT_NEAR(distance(stage.played[1].frame), 44, 1e-9);
  EXPECT_NEAR(stage.played[1].time - stage.played[0].time, 0.008, 1e-9);
}

class PinchTo : public testing::TestWithParam<double> {};

TEST_P(PinchTo, theDesktopSeesTheScale) {
  Stage stage;
  stage.send(magnify, began);
  stage.changes(magnify, repeated(stepOf(GetParam(), 50), 50));
  stage.send(magnify, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 1U);
  EXPECT_NEAR(stage.desktop.gestures[0].scale / GetParam(), 1, 0.01);
  EXPECT_NEAR(stage.desktop.gestures[0].angle, 0, 0.01);
  EXPECT_TRUE(stage.desktop.gestures[0].over);
  EXPECT_FALSE(stage.desktop.gestures[0].cancelled);
  EXPECT_EQ(stage.contactsDown(), 0);
}

INSTANTIATE_TEST_SUITE_P(Scales, PinchTo,
                         testing::Values(0.11, 0.25, 0.5, 0.9, 0.99, 1.0, 1.01, 1.5, 3.0, 5.4));

class TurnBy : public testing::TestWithParam<double> {};

TEST_P(TurnBy, theDesktopSeesTheAngleClockwise) {
  Stage stage;
  stage.send(rotate, began);
  stage.changes(rotate, repeated(GetParam() / 60, 60));
  stage.send(rotate, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 1U);
  EXPECT_NEAR(stage.desktop.gestures[0].angle, -GetParam(), 0.5);
  EXPECT_NEAR(stage.desktop.gestures[0].scale, 1, 0.001);
  EXPECT_FALSE(stage.desktop.gestures[0].cancelled);
}

INSTANTIATE_TEST_SUITE_P(Angles, TurnBy,
                         testing::Values(-720.0, -180.0, -45.0, -1.0, 1.0, 30.0, 90.0, 359.0,
                                         1080.0));

TEST(GesturePlayer, aPinchBeyondThePadGoesOnAfterLandingAnew) {
  for (const double scale : {20.0, 1 / 20.0, 200.0}) {
    Stage stage;
    stage.send(magnify, began);
    stage.changes(magnify, repeated(stepOf(scale, 100), 100));
    stage.send(magnify, ended);
    stage.settle();
    EXPECT_GE(stage.desktop.gestures.size(), 2U);
    EXPECT_NEAR(product(stage.desktop.gestures) / scale, 1, 0.01);
    for (const auto& gesture : stage.desktop.gestures) {
      EXPECT_TRUE(gesture.over && !gesture.cancelled);
    }
    EXPECT_EQ(stage.contactsDown(), 0);
  }
}

TEST(GesturePlayer, onePinchReachesTheLimitItselfInOneLanding) {
  for (const double scale : {kSmallestScale, kLargestScale}) {
    Stage stage;
    stage.send(magnify, began);
    stage.changes(magnify, repeated(stepOf(scale, 100), 100));
    stage.send(magnify, ended);
    stage.settle();
    EXPECT_NEAR(product(stage.desktop.gestures) / scale, 1, 0.01);
  }
}

TEST(GesturePlayer, thereAndBackEndsWhereItBegan) {
  Stage stage;
  stage.send(magnify, began);
  stage.changes(magnify, repeated(0.05, 20));
  stage.changes(magnify, repeated(1 / 1.05 - 1, 20));
  stage.send(magnify, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 1U);
  EXPECT_NEAR(stage.desktop.gestures[0].scale, 1, 0.001);
}

TEST(GesturePlayer, changesFasterThanTheFramesAreMerged) {
  Stage stage;
  stage.send(magnify, began);
  stage.changes(magnify, repeated(0.002, 300), 0.001);
  stage.send(magnify, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 1U);
  EXPECT_NEAR(stage.desktop.gestures[0].scale / std::pow(1.002, 300), 1, 0.001);
  EXPECT_LE(stage.played.size(), 300U / 8 + 6);
}

TEST(GesturePlayer, aSuddenChangeIsSpreadOverFrames) {
  Stage stage;
  stage.send(magnify, began);
  stage.pass(0.1);
  const auto before = stage.played.size();
  stage.send(magnify, changed, 0.9);  // 19.8 mm for each contact
  stage.pass(0.1);
  // Three at full speed would do, but the contacts may only gather speed so fast.
  EXPECT_EQ(stage.played.size() - before, 4U);
  EXPECT_NEAR(stage.desktop.gestures[0].scale, 1.9, 0.001);
}

TEST(GesturePlayer, whatIsLeftOverIsPlayedBeforeTheEnd) {
  Stage stage;
  stage.send(magnify, began);
  stage.send(magnify, changed, 0.9);
  stage.send(magnify, changed, 0.9);
  stage.send(magnify, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 1U);
  EXPECT_NEAR(stage.desktop.gestures[0].scale, 1.9 * 1.9, 0.01);
  EXPECT_FALSE(stage.desktop.gestures[0].cancelled);
}

TEST(GesturePlayer, restingFingersMakeNoFrames) {
  Stage stage;
  stage.send(magnify, began);
  stage.changes(magnify, repeated(0.01, 5));
  const auto before = stage.played.size();
  stage.changes(magnify, repeated(0.0, 50));
  EXPECT_EQ(stage.played.size(), before);
  EXPECT_EQ(stage.contactsDown(), 2);
}

TEST(GesturePlayer, aGestureWithoutAChangeStillBeginsAndEnds) {
  Stage stage;
  stage.send(rotate, began);
  stage.send(rotate, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 1U);
  EXPECT_TRUE(stage.desktop.gestures[0].over);
  EXPECT_EQ(stage.contactsDown(), 0);
}

TEST(GesturePlayer, aCancelledGestureLiftsOneContactAndThenTheOther) {
  Stage stage;
  stage.send(magnify, began);
  stage.changes(magnify, repeated(0.01, 5));
  stage.send(magnify, cancelled);
  stage.pass(0.020);
  EXPECT_EQ(stage.contactsDown(), 1);
  stage.pass(kLettingGoTime - 0.021);
  EXPECT_EQ(stage.contactsDown(), 1);
  stage.pass(0.020);
  EXPECT_EQ(stage.contactsDown(), 0);
  ASSERT_EQ(stage.desktop.gestures.size(), 1U);
  EXPECT_TRUE(stage.desktop.gestures[0].cancelled);
}

TEST(GesturePlayer, aCancelledGestureIsNotPlayedToItsEnd) {
  Stage stage;
  stage.send(magnify, began);
  stage.pass(0.1);
  stage.send(magnify, changed, 0.9);
  stage.send(magnify, cancelled);
  stage.settle();
  EXPECT_DOUBLE_EQ(stage.desktop.gestures.at(0).scale, 1);
}

TEST(GesturePlayer, oneThatIsCancelledBeforeItLandsIsNotPlayed) {
  Stage stage;
  stage.send(magnify, began);
  stage.send(magnify, cancelled);
  stage.settle();
  EXPECT_TRUE(stage.played.empty());
}

TEST(GesturePlayer, theNextGestureWaitsUntilTheCancelledOneIsOffThePad) {
  Stage stage;
  stage.send(magnify, began);
  stage.changes(magnify, repeated(0.01, 5));
  stage.send(magnify, cancelled);
  stage.pass(0.010);
  stage.send(rotate, began);
  stage.changes(rotate, repeated(2, 10));
  stage.send(rotate, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 2U);
  EXPECT_TRUE(stage.desktop.gestures[0].cancelled);
  EXPECT_NEAR(stage.desktop.gestures[1].angle, -20, 0.5);
  EXPECT_FALSE(stage.desktop.gestures[1].cancelled);
}

TEST(GesturePlayer, oneThatIsCancelledWhileItWaitsIsNotPlayed) {
  Stage stage;
  stage.send(magnify, began);
  stage.pass(0.05);
  stage.send(magnify, cancelled);
  stage.pass(0.010);
  stage.send(rotate, began);
  stage.send(rotate, cancelled);
  stage.settle();
  EXPECT_EQ(stage.desktop.gestures.size(), 1U);
}

TEST(GesturePlayer, aBeginningWithoutAnEndBeforeItCancelsTheOpenGesture) {
  Stage stage;
  stage.send(magnify, began);
  stage.pass(0.05);
  stage.send(magnify, began);
  stage.changes(magnify, repeated(0.02, 20));
  stage.send(magnify, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 2U);
  EXPECT_TRUE(stage.desktop.gestures[0].cancelled);
  EXPECT_NEAR(stage.desktop.gestures[1].scale / std::pow(1.02, 20), 1, 0.01);
}

TEST(GesturePlayer, aGestureThatIsForgottenIsCancelled) {
  Stage stage;
  stage.send(magnify, began);
  stage.pass(kForgottenAfter - 0.001);
  EXPECT_EQ(stage.contactsDown(), 2);
  stage.pass(0.002);
  EXPECT_EQ(stage.contactsDown(), 1);
  stage.settle();
  EXPECT_EQ(stage.contactsDown(), 0);
  EXPECT_TRUE(stage.desktop.gestures.at(0).cancelled);
  EXPECT_FALSE(stage.player.deadline());
}

TEST(GesturePlayer, aChangeKeepsAGestureFromBeingForgotten) {
  Stage stage;
  stage.send(magnify, began);
  stage.pass(kForgottenAfter - 0.001);
  stage.send(magnify, changed, 0);
  stage.pass(kForgottenAfter - 0.001);
  EXPECT_EQ(stage.contactsDown(), 2);
}

TEST(GesturePlayer, aChangeAfterBeingForgottenBeginsAnew) {
  Stage stage;
  stage.send(magnify, began);
  stage.pass(3);
  stage.changes(magnify, repeated(0.02, 20));
  stage.send(magnify, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 2U);
  EXPECT_NEAR(stage.desktop.gestures[1].scale / std::pow(1.02, 20), 1, 0.01);
}

TEST(GesturePlayer, eventsOfTheOtherKindDoNotTouchTheOpenGesture) {
  Stage stage;
  stage.send(magnify, began);
  stage.changes(magnify, repeated(0.01, 10));
  stage.send(rotate, changed, 30);
  stage.send(rotate, ended);
  stage.send(rotate, cancelled);
  stage.changes(magnify, repeated(0.01, 10));
  stage.send(magnify, ended);
  stage.settle();
  ASSERT_EQ(stage.desktop.gestures.size(), 1U);
  EXPECT_NEAR(stage.desktop.gestures[0].scale / std::pow(1.01, 20), 1, 0.01);
  EXPECT_NEAR(stage.desktop.gestures[0].angle, 0, 0.01);
}

TEST(GesturePlayer, strayTerminalEventsAreIgnored) {
  Stage stage;
  stage.send(magnify, ended);
  stage.send(rotate, cancelled);
  stage.settle();
  EXPECT_TRUE(stage.played.empty());
}

TEST(GesturePlayer, numbersThatAreNoneChangeNothing) {
  Stage stage;
  stage.send(magnify, began);
  stage.send(magnify, changed, std::numeric_limits<double>::quiet_NaN());
  stage.send(magnify, changed, std::numeric_limits<double>::infinity());
  stage.send(magnify, ended);
  stage.settle();
  EXPECT_DOUBLE_EQ(stage.desktop.gestures.at(0).scale, 1);
}

TEST(GesturePlayer, aStepThatWouldTurnTheDistanceRoundIsHeldAtHalf) {
  Stage stage;
  stage.send(magnify, began);
  stage.send(magnify, changed, -3);
  stage.send(magnify, ended);
  stage.settle();
  EXPECT_NEAR(product(stage.desktop.gestures), 0.5, 0.001);
}

TEST(GesturePlayer, endlessGrowthIsHeldAtWhatIsPending) {
  Stage stage;
  stage.send(magnify, began);
  for (int i = 0; i < 5000; ++i) stage.send(magnify, changed, 1);
  stage.send(magnify, ended);
  stage.settle();
  EXPECT_LE(product(stage.desktop.gestures), kMostPendingScale * 1.01);
  EXPECT_EQ(stage.contactsDown(), 0);
}

TEST(GesturePlayer, aGestureThatEndedBeforeItCouldLandIsDroppedWhenItIsTooLate) {
  GesturePlayer player;
  player.handle(magnify, began, 0, 1);
  player.handle(magnify, ended, 0, 1.1);
  EXPECT_FALSE(player.step(1.1 + kTooLateToLand));
  EXPECT_FALSE(player.deadline());
}

TEST(GesturePlayer, oneThatEndedJustBeforeItCouldLandIsPlayed) {
  GesturePlayer player;
  player.handle(magnify, began, 0, 1);
  player.handle(magnify, ended, 0, 1.1);
  EXPECT_TRUE(player.step(1.1 + kTooLateToLand - 0.001));
}

TEST(GesturePlayer, abandoningLiftsWhatIsDown) {
  Stage stage;
  EXPECT_FALSE(stage.player.abandon());
  stage.send(magnify, began);
  stage.pass(0.05);
  const auto frame = stage.player.abandon();
  ASSERT_TRUE(frame);
  EXPECT_EQ(*frame, PadFrame{});
  EXPECT_FALSE(stage.player.deadline());
  EXPECT_FALSE(stage.player.abandon());
}

// Whatever comes, in whatever order and at whatever times: frames keep their distance in time,
// contacts stay on the pad and move like fingers, and in the end nothing is down.
TEST(GesturePlayer, holdsItsPromisesForAnySequence) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    std::mt19937 random(seed);
    Stage stage;
    std::uniform_int_distribution<int> dice(0, 9);
    std::uniform_real_distribution<double> value(-0.3, 0.3);
    std::exponential_distribution<double> gap(seed % 2 == 0 ? 100 : 8);
    for (int i = 0; i < 120; ++i) {
      const GestureKind kind = dice(random) < 7 ? magnify : rotate;
      const int which = dice(random);
      const GesturePhase phase = which == 0   ? began
                                 : which == 1 ? ended
                                 : which == 2 ? cancelled
                                              : changed;
      stage.send(kind, phase, kind == rotate ? 100 * value(random) : value(random));
      stage.pass(gap(random));
    }
    stage.settle();
    EXPECT_EQ(stage.contactsDown(), 0) << seed;
    EXPECT_FALSE(stage.player.deadline()) << seed;
    for (const auto& gesture : stage.desktop.gestures) EXPECT_TRUE(gesture.over) << seed;
    double lastSpeed = 0;
    for (std::size_t i = 1; i < stage.played.size(); ++i) {
      const auto& [time, frame] = stage.played[i];
      const auto& [before, last] = stage.played[i - 1];
      EXPECT_GE(time - before, kFrameSpacing - 1e-9) << seed;
      double fastest = 0;
      for (std::size_t c = 0; c < 2; ++c) {
        if (!frame.contacts[c]) continue;
        EXPECT_GT(frame.contacts[c]->x, 1);
        EXPECT_LT(frame.contacts[c]->x, kPadWidth - 1);
        EXPECT_GT(frame.contacts[c]->y, 1);
        EXPECT_LT(frame.contacts[c]->y, kPadHeight - 1);
        if (!last.contacts[c]) continue;
        const double moved = std::hypot(frame.contacts[c]->x - last.contacts[c]->x,
                                        frame.contacts[c]->y - last.contacts[c]->y);
        EXPECT_LE(moved, kLongestStep + 1e-9) << seed;
        fastest = std::max(fastest, moved / (time - before));
      }
      // Beyond this the desktop takes the contact for a jumping one. Measured: the movement of
      // the frame after landing is not counted as speed gathered.
      const bool judged = time - before < 0.030;
      EXPECT_TRUE(!judged || (fastest - lastSpeed) * 0.012 <= 7) << seed;
      const bool justLanded = i >= 2 && stage.played[i - 2].frame == PadFrame{};
      lastSpeed = justLanded ? 0 : fastest;
    }
  }
}

}  // namespace
}  // namespace velotap
