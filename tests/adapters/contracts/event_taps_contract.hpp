// What every EventTaps promises, wherever events come from.
//
// A world makes one and plays the system and the hand on the mouse.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/event_taps.hpp"

namespace velotap::test {

struct WorldEvent {
  MouseEventType type = MouseEventType::leftDown;
  int button = 0;
  friend bool operator==(const WorldEvent&, const WorldEvent&) = default;
};

inline constexpr WorldEvent kLeftPress{MouseEventType::leftDown, 0};
inline constexpr WorldEvent kRightPress{MouseEventType::rightDown, 1};

[[nodiscard]] constexpr WorldEvent releaseOf(const WorldEvent& press) {
  return {press == kLeftPress ? MouseEventType::leftUp : MouseEventType::rightUp, press.button};
}

class EventTapsWorld {
 public:
  virtual ~EventTapsWorld() = default;
  [[nodiscard]] virtual EventTaps& taps() = 0;
  /// A button is pressed and let go; what the desktop got of the press, nothing when it was
  /// dropped.
  virtual std::optional<WorldEvent> click(WorldEvent press) = 0;
  /// The system disables the session's taps because one was too slow. They may come back.
  virtual void timeOut() = 0;
};

/// A world whose system may refuse a tap, and may disable one for good.
class SternTapsWorld : public EventTapsWorld {
 public:
  virtual void refuse(TapLocation location) = 0;
  virtual void disableForGood(TapDisabled reason) = 0;
};

template <typename World>
class EventTapsContract : public ::testing::Test {
 protected:
  static constexpr std::uint64_t kLeftDownOnly = 1U << 1;
  static constexpr std::uint64_t kLeft = 1U << 1 | 1U << 2;

  std::unique_ptr<InstalledTap> install(std::function<TapAnswer(TappedEvent&)> event,
                                        std::uint64_t mask = kLeftDownOnly) {
    return world_.taps().install(
        TapLocation::session, mask,
        {std::move(event), [this](TapDisabled why) { disabled_.push_back(why); }});
  }

  World world_;
  std::vector<TapDisabled> disabled_;
};

TYPED_TEST_SUITE_P(EventTapsContract);

TYPED_TEST_P(EventTapsContract, aNewTapPassesEverythingUntilItIsEnabled) {
  int seen = 0;
  const auto tap = this->install([&](TappedEvent&) {
    ++seen;
    return TapAnswer::drop;
  });
  ASSERT_NE(tap, nullptr);
  EXPECT_FALSE(tap->enabled());
  EXPECT_EQ(this->world_.click(kLeftPress), kLeftPress);
  tap->enable(true);
  EXPECT_TRUE(tap->enabled());
  EXPECT_EQ(this->world_.click(kLeftPress), std::nullopt);
  tap->enable(false);
  EXPECT_EQ(this->world_.click(kLeftPress), kLeftPress);
  EXPECT_EQ(seen, 1);
}

TYPED_TEST_P(EventTapsContract, onlyTypesOfTheMaskAreSeen) {
  const auto tap = this->install([](TappedEvent& event) {
    EXPECT_EQ(event.type(), MouseEventType::leftDown);
    return TapAnswer::drop;
  });
  tap->enable(true);
  EXPECT_EQ(this->world_.click(kRightPress), kRightPress);
  EXPECT_EQ(this->world_.click(kLeftPress), std::nullopt);
}

TYPED_TEST_P(EventTapsContract, aPressAndItsReleaseHaveOneNumberAndTheNextPressAnother) {
  std::vector<std::int64_t> numbers;
  const auto tap = this->install(
      [&](TappedEvent& event) {
        numbers.push_back(event.number());
        return TapAnswer::pass;
      },
      this->kLeft);
  tap->enable(true);
  EXPECT_EQ(this->world_.click(kLeftPress), kLeftPress);
  EXPECT_EQ(this->world_.click(kLeftPress), kLeftPress);
  ASSERT_EQ(numbers.size(), 4U);
  EXPECT_EQ(numbers[0], numbers[1]);
  EXPECT_EQ(numbers[2], numbers[3]);
  EXPECT_NE(numbers[0], numbers[2]);
}

TYPED_TEST_P(EventTapsContract, anEventMayBeRewrittenInPlace) {
  const auto tap = this->install([](TappedEvent& event) {
    event.setType(MouseEventType::otherDown);
    event.setButton(kMiddleButton);
    EXPECT_EQ(event.type(), MouseEventType::otherDown);
    return TapAnswer::pass;
  });
  tap->enable(true);
  EXPECT_EQ(this->world_.click(kLeftPress), (WorldEvent{MouseEventType::otherDown, kMiddleButton}));
}

TYPED_TEST_P(EventTapsContract, theNewestTapIsFirst) {
  std::vector<int> order;
  const auto older = this->install([&](TappedEvent&) {
    order.push_back(1);
    return TapAnswer::pass;
  });
  const auto newer = this->install([&](TappedEvent&) {
    order.push_back(2);
    return TapAnswer::pass;
  });
  older->enable(true);
  newer->enable(true);
  this->world_.click(kLeftPress);
  EXPECT_EQ(order, (std::vector{2, 1}));
}

TYPED_TEST_P(EventTapsContract, whatOneTapDropsTheNextDoesNotSee) {
  const auto older = this->install([](TappedEvent&) {
    ADD_FAILURE() << "the event is gone";
    return TapAnswer::pass;
  });
  const auto newer = this->install([](TappedEvent&) { return TapAnswer::drop; });
  older->enable(true);
  newer->enable(true);
  EXPECT_EQ(this->world_.click(kLeftPress), std::nullopt);
}

TYPED_TEST_P(EventTapsContract, aRemovedTapSeesNothing) {
  auto tap = this->install([](TappedEvent&) { return TapAnswer::drop; });
  tap->enable(true);
  tap.reset();
  EXPECT_EQ(this->world_.click(kLeftPress), kLeftPress);
}

TYPED_TEST_P(EventTapsContract, aDisabledTapIsToldAndMayComeBack) {
  const auto tap = this->install([](TappedEvent&) { return TapAnswer::drop; });
  tap->enable(true);
  this->world_.timeOut();
  EXPECT_EQ(this->disabled_, std::vector{TapDisabled::byTimeout});
  EXPECT_FALSE(tap->enabled());
  EXPECT_EQ(this->world_.click(kLeftPress), kLeftPress);
  tap->enable(true);
  EXPECT_TRUE(tap->enabled());
  EXPECT_EQ(this->world_.click(kLeftPress), std::nullopt);
}

TYPED_TEST_P(EventTapsContract, aTapMayRemoveItself) {
  std::unique_ptr<InstalledTap> tap = this->install([&](TappedEvent&) {
    tap.reset();
    return TapAnswer::pass;
  });
  tap->enable(true);
  EXPECT_EQ(this->world_.click(kLeftPress), kLeftPress);
  EXPECT_EQ(tap, nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(EventTapsContract, aNewTapPassesEverythingUntilItIsEnabled,
                            onlyTypesOfTheMaskAreSeen,
                            aPressAndItsReleaseHaveOneNumberAndTheNextPressAnother,
                            anEventMayBeRewrittenInPlace, theNewestTapIsFirst,
                            whatOneTapDropsTheNextDoesNotSee, aRemovedTapSeesNothing,
                            aDisabledTapIsToldAndMayComeBack, aTapMayRemoveItself);

template <typename World>
class SternTapsContract : public EventTapsContract<World> {};

TYPED_TEST_SUITE_P(SternTapsContract);

TYPED_TEST_P(SternTapsContract, aRefusedTapIsNull) {
  this->world_.refuse(TapLocation::session);
  EXPECT_EQ(this->install({}), nullptr);
  EXPECT_NE(this->world_.taps().install(TapLocation::hid, this->kLeftDownOnly, {}), nullptr);
}

TYPED_TEST_P(SternTapsContract, theLowestLevelMayBeRefusedAlone) {
  this->world_.refuse(TapLocation::hid);
  EXPECT_EQ(this->world_.taps().install(TapLocation::hid, this->kLeftDownOnly, {}), nullptr);
  EXPECT_NE(this->install({}), nullptr);
}

TYPED_TEST_P(SternTapsContract, aTapThatDoesNotReviveStaysDisabled) {
  const auto tap = this->install([](TappedEvent&) { return TapAnswer::drop; });
  tap->enable(true);
  this->world_.disableForGood(TapDisabled::byUserInput);
  EXPECT_EQ(this->disabled_, std::vector{TapDisabled::byUserInput});
  tap->enable(true);
  EXPECT_FALSE(tap->enabled());
}

REGISTER_TYPED_TEST_SUITE_P(SternTapsContract, aRefusedTapIsNull, theLowestLevelMayBeRefusedAlone,
                            aTapThatDoesNotReviveStaysDisabled);

}  // namespace velotap::test
