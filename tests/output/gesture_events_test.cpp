#include "output/gesture_events.hpp"

#include <gtest/gtest.h>

#include "support/desktop.hpp"

namespace velotap {
namespace {

using test::Lines;

class GestureEventsTest : public ::testing::Test, protected test::Desktop {};

TEST_F(GestureEventsTest, AKeystrokeIsAPressAndAReleaseWithTheseFlags) {
  GestureEvents::postKeystroke(events, 33, kCommandFlag);
  EXPECT_EQ(posted.take(), (Lines{"key 33 down flags=1048576", "key 33 up flags=1048576"}));
  GestureEvents::postKeystroke(events, 65535, 0);
  EXPECT_EQ(posted.take(), (Lines{"key 65535 down flags=0", "key 65535 up flags=0"}));
}

TEST_F(GestureEventsTest, NothingIsPostedWhenEitherEventCannotBeMade) {
  events.setKeyFailure([](bool down) { return !down; });
  GestureEvents::postKeystroke(events, 33, kCommandFlag);
  EXPECT_EQ(posted.take(), Lines{}) << "a press without its release would repeat for ever";
  events.setKeyFailure([](bool down) { return down; });
  GestureEvents::postKeystroke(events, 33, kCommandFlag);
  EXPECT_EQ(posted.take(), Lines{});
}

// A system that marks fresh events with the modifiers that are held just now.
class ModifierHeld final : public EventStream {
 public:
  [[nodiscard]] std::optional<Point> pointerLocation() override { return std::nullopt; }
  [[nodiscard]] std::optional<MouseEvent> makeMouse(MouseEventType, int, Point) override {
    return std::nullopt;
  }
  void post(const MouseEvent&) override {}
  [[nodiscard]] std::optional<KeyEvent> makeKey(std::uint16_t keyCode, bool down) override {
    return KeyEvent{.keyCode = keyCode, .down = down, .flags = 0x20000, .native = {}};
  }
  void post(const KeyEvent& event) override { flags.push_back(event.flags); }
  void post(const GestureEvent&) override {}
  std::vector<std::uint64_t> flags;
};

TEST(GestureEvents, FlagsAreReplacedNotAdded) {
  ModifierHeld events;
  GestureEvents::postKeystroke(events, 33, kCommandFlag);
  EXPECT_EQ(events.flags, (std::vector<std::uint64_t>{kCommandFlag, kCommandFlag}));
}

}  // namespace
}  // namespace velotap
