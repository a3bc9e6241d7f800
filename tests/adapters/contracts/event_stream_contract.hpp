// What every EventStream promises, whatever takes its events.
//
// A world makes one and shows what arrived: one line for each event.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/event_stream.hpp"

namespace velotap::test {

class EventStreamWorld {
 public:
  virtual ~EventStreamWorld() = default;
  [[nodiscard]] virtual EventStream& events() = 0;
  /// "mouse 25 2", "key 33 down 0x100000", "magnify 2 0.05 (1, 2)" with numbers of the port's
  /// enumerations.
  [[nodiscard]] virtual std::vector<std::string> posted() = 0;
};

/// A world whose system takes events as objects of its own, which hold all that was said, and can
/// refuse to make them. Elsewhere events become what devices say, and clicks land at the pointer.
class EventObjectsWorld : public EventStreamWorld {
 public:
  /// Nothing: no event can be made to read it.
  virtual void setPointer(std::optional<Point> location) = 0;
  virtual void failMouse() = 0;
  virtual void failKeys() = 0;
  /// " (10, 20)" for each mouse event, in order.
  [[nodiscard]] virtual std::vector<std::string> places() = 0;
};

[[nodiscard]] inline std::string number(double value) {
  std::string text = std::to_string(value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

[[nodiscard]] inline std::string place(double x, double y) {
  return " (" + number(x) + ", " + number(y) + ")";
}

template <typename World>
class EventStreamContract : public ::testing::Test {
 protected:
  World world_;
  EventStream& events_ = world_.events();
};

TYPED_TEST_SUITE_P(EventStreamContract);

TYPED_TEST_P(EventStreamContract, makingPostsNothingAndPostingKeepsTheOrder) {
  const auto press = this->events_.makeMouse(MouseEventType::otherDown, kMiddleButton, {10, 20});
  const auto release = this->events_.makeMouse(MouseEventType::otherUp, kMiddleButton, {10, 20});
  ASSERT_TRUE(press && release);
  EXPECT_TRUE(this->world_.posted().empty());
  this->events_.post(*press);
  this->events_.post(*release);
  EXPECT_EQ(this->world_.posted(), (std::vector<std::string>{"mouse 25 2", "mouse 26 2"}));
}

TYPED_TEST_P(EventStreamContract, anEventSaysWhatItIs) {
  const auto press = this->events_.makeMouse(MouseEventType::otherDown, kMiddleButton, {1, 2});
  ASSERT_TRUE(press);
  EXPECT_EQ(press->type, MouseEventType::otherDown);
  EXPECT_EQ(press->button, kMiddleButton);
  EXPECT_EQ(press->location, (Point{1, 2}));
  const auto key = this->events_.makeKey(33, true);
  ASSERT_TRUE(key);
  EXPECT_EQ(key->keyCode, 33);
  EXPECT_TRUE(key->down);
}

TYPED_TEST_P(EventStreamContract, gesturesKeepKindPhaseValueAndPlace) {
  this->events_.prepareGestures();
  this->events_.post(GestureEvent{GestureKind::magnify, GesturePhase::began, 0, {1, 2}});
  this->events_.post(GestureEvent{GestureKind::magnify, GesturePhase::changed, 0.05, {1, 2}});
  this->events_.post(GestureEvent{GestureKind::rotate, GesturePhase::cancelled, -1.5, {3, 4}});
  EXPECT_EQ(this->world_.posted(),
            (std::vector<std::string>{"magnify 1 0 (1, 2)", "magnify 2 0.05 (1, 2)",
                                      "rotate 8 -1.5 (3, 4)"}));
}

REGISTER_TYPED_TEST_SUITE_P(EventStreamContract, makingPostsNothingAndPostingKeepsTheOrder,
                            anEventSaysWhatItIs, gesturesKeepKindPhaseValueAndPlace);

template <typename World>
class EventObjectsContract : public EventStreamContract<World> {};

TYPED_TEST_SUITE_P(EventObjectsContract);

TYPED_TEST_P(EventObjectsContract, thePointerIsWhereItIsOrUnknown) {
  this->world_.setPointer(Point{512, 384.5});
  EXPECT_EQ(this->events_.pointerLocation(), (Point{512, 384.5}));
  this->world_.setPointer(std::nullopt);
  EXPECT_EQ(this->events_.pointerLocation(), std::nullopt);
}

TYPED_TEST_P(EventObjectsContract, keysCarryTheFlagsThatTheyHaveWhenPosted) {
  auto press = this->events_.makeKey(33, true);
  auto release = this->events_.makeKey(33, false);
  ASSERT_TRUE(press && release);
  press->flags = kCommandFlag;
  release->flags = kCommandFlag;
  this->events_.post(*press);
  this->events_.post(*release);
  EXPECT_EQ(this->world_.posted(),
            (std::vector<std::string>{"key 33 down 0x100000", "key 33 up 0x100000"}));
}

TYPED_TEST_P(EventObjectsContract, whatCannotBeMadeIsNothing) {
  this->world_.failMouse();
  this->world_.failKeys();
  EXPECT_FALSE(this->events_.makeMouse(MouseEventType::otherDown, kMiddleButton, {}));
  EXPECT_FALSE(this->events_.makeKey(33, true));
}

TYPED_TEST_P(EventObjectsContract, aMouseEventKeepsItsPlace) {
  const auto press = this->events_.makeMouse(MouseEventType::otherDown, kMiddleButton, {10, 20.5});
  ASSERT_TRUE(press);
  this->events_.post(*press);
  EXPECT_EQ(this->world_.places(), std::vector<std::string>{" (10, 20.5)"});
}

REGISTER_TYPED_TEST_SUITE_P(EventObjectsContract, thePointerIsWhereItIsOrUnknown,
                            keysCarryTheFlagsThatTheyHaveWhenPosted, whatCannotBeMadeIsNothing,
                            aMouseEventKeepsItsPlace);

}  // namespace velotap::test
