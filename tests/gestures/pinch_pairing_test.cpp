// Whatever fingers do, every gesture that begins ends exactly once, and after a cancel nothing is
// posted until every finger has lifted. An application that saw a beginning without an end would
// stay in its gesture for ever.
//
// Only one thing may leave a beginning without its end: the application went out of the front, and
// the end would have reached its successor.

#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "engine_fixture.hpp"
#include "support/random_hand.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

// Follows the events of one device.
class PairingJudge {
 public:
  void frame(bool empty) {
    if (empty) cancelledSinceLift_ = false;
  }
  void event(const GestureEvent& event) {
    switch (event.phase) {
      case GesturePhase::began:
        EXPECT_FALSE(running_);
        EXPECT_FALSE(cancelledSinceLift_) << "a gesture began before every finger had lifted";
        EXPECT_EQ(event.value, 0);
        running_ = event.kind;
        ++began;
        break;
      case GesturePhase::changed:
        EXPECT_EQ(running_, event.kind);
        EXPECT_LE(std::abs(event.value), event.kind == GestureKind::magnify ? 0.1 : 180.0);
        ++changed;
        break;
      case GesturePhase::ended:
        EXPECT_EQ(running_, event.kind);
        EXPECT_EQ(event.value, 0);
        running_.reset();
        ++ended;
        break;
      case GesturePhase::cancelled:
        EXPECT_EQ(running_, event.kind);
        EXPECT_EQ(event.value, 0);
        running_.reset();
        cancelledSinceLift_ = true;
        ++cancelled;
        break;
    }
  }
  [[nodiscard]] bool running() const { return running_.has_value(); }
  int began = 0;
  int changed = 0;
  int ended = 0;
  int cancelled = 0;

 private:
  std::optional<GestureKind> running_;
  bool cancelledSinceLift_ = false;
};

class PinchPairing : public EngineTest, public ::testing::WithParamInterface<std::uint32_t> {
 protected:
  PinchPairing() {
    log.setEnabled(false);
    set("mouseRotate", true);
    set("mouseClick2", true);
  }
  void play(const Frame& contacts) {
    // A frame that lifts everything may cancel first; the mark counts from the next frame.
    deliver(mouse, contacts);
    for (const GestureEvent& event : posted.takeGestures()) judge_.event(event);
    judge_.frame(contacts.empty());
    time.advance(0.008);
  }
  void finish() {
    play({});
    EXPECT_FALSE(judge_.running());
    EXPECT_FALSE(pinch.isPinching());
    EXPECT_EQ(judge_.began, judge_.ended + judge_.cancelled);
  }
  PairingJudge judge_;
};

TEST_P(PinchPairing, FingersAlone) {
  RandomHand hand(GetParam());
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    play(hand.next());
    EXPECT_EQ(judge_.running(), pinch.isPinching());
  }
  finish();
  EXPECT_GT(judge_.began, 100) << "or the hand plays nothing";
  EXPECT_GT(judge_.changed, 500);
  EXPECT_GT(judge_.ended, 20);
  EXPECT_GT(judge_.cancelled, 20);
}

TEST_P(PinchPairing, FingersSettingsAndClicks) {
  RandomHand hand(GetParam() + 100);
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    if (hand.chance(40)) set("mousePinchZoom", hand.chance(2));
    if (hand.chance(40)) set("mouseRotate", hand.chance(2));
    if (hand.chance(100)) set("enabled", hand.chance(2));
    if (hand.chance(30)) static_cast<void>(engine.shouldConvertClick(Button::left));
    if (hand.chance(10)) engine.endConversion(Button::left);
    if (hand.chance(100)) set("pinchSensitivity", 0.1 + hand.below(50) / 10.0);
    play(hand.next());
  }
  finish();
  EXPECT_GT(judge_.began, 20);
  EXPECT_GT(judge_.cancelled, 10);
}

TEST_P(PinchPairing, FingersAndRestarts) {
  RandomHand hand(GetParam() + 200);
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    play(hand.next());
    if (!hand.chance(100)) continue;
    engine.start();
    for (const GestureEvent& event : posted.takeGestures()) judge_.event(event);
    EXPECT_FALSE(judge_.running());
    multitouch.takeCalls();
  }
  finish();
  EXPECT_GT(judge_.began, 50);
}

// Application switches may swallow an end, but never let anything out of order through.
TEST_P(PinchPairing, NothingComesLateAfterASwitch) {
  RandomHand hand(GetParam() + 300);
  bool blocked = false;
  int began = 0;
  for (int i = 0; i < 20000; ++i) {
    const Frame contacts = hand.next();
    if (hand.chance(50)) {
      activate(hand.chance(2) ? kEditor : kBrowser);
      // The switch shows in the next frame; a pinch of the old application ends there in silence.
      const bool wasPinching = pinch.isPinching();
      deliver(mouse, contacts);
      if (wasPinching && !pinch.isPinching()) blocked = !contacts.empty();
      posted.takeGestures();
      continue;
    }
    deliver(mouse, contacts);
    for (const GestureEvent& event : posted.takeGestures()) {
      EXPECT_FALSE(blocked);
      began += event.phase == GesturePhase::began ? 1 : 0;
    }
    if (contacts.empty()) blocked = false;
    if (HasFailure()) break;
  }
  EXPECT_GT(began, 50);
}

INSTANTIATE_TEST_SUITE_P(Seeds, PinchPairing, ::testing::Range(1U, 9U));

}  // namespace
}  // namespace velotap
