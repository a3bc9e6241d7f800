// What every EventTaps promises, wherever events come from.
//
// A world makes one and plays the system: sends presses, disables taps, refuses new ones.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

#include "platform/event_taps.hpp"

namespace velotap::test {

struct WorldEvent {
  MouseEventType type = MouseEventType::leftDown;
  int button = 0;
  std::int64_t number = 0;
  friend bool operator==(const WorldEvent&, const WorldEvent&) = default;
};

class EventTapsWorld {
 public:
  virtual ~EventTapsWorld() = default;
  [[nodiscard]] virtual EventTaps& taps() = 0;
  virtual void refuse(TapLocation location) = 0;
  /// An event at the session level; what the last tap passed on, nothing when it was dropped.
  virtual std::optional<WorldEvent> send(WorldEvent event) = 0;
  /// The system disables the session's taps.
  virtual void disable(TapDisabled reason, bool revives) = 0;
};

template <typename World>
class EventTapsContract : public ::testing::Test {
 protected:
  static constexpr std::uint64_t kLeftDownOnly = 1U << 1;

  std::unique_ptr<InstalledTap> install(std::function<TapAnswer(TappedEvent&)> event) {
    return world_.taps().install(
        TapLocation::session, kLeftDownOnly,
        {std::move(event), [this](TapDisabled why) { disabled_.push_back(why); }});
  }

  World world_;
  std::vector<TapDisabled> disabled_;
  const WorldEvent press_{MouseEventType::leftDown, 0, 7};
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
  EXPECT_EQ(this->world_.send(this->press_), this->press_);
  tap->enable(true);
  EXPECT_TRUE(tap->enabled());
  EXPECT_EQ(this->world_.send(this->press_), std::nullopt);
  tap->enable(false);
  EXPECT_EQ(this->world_.send(this->press_), this->press_);
  EXPECT_EQ(seen, 1);
}

TYPED_TEST_P(EventTapsContract, onlyTypesOfTheMaskAreSeen) {
  const auto tap = this->install([](TappedEvent& event) {
    EXPECT_EQ(event.type(), MouseEventType::leftDown);
    EXPECT_EQ(event.number(), 7);
    return TapAnswer::drop;
  });
  tap->enable(true);
  const WorldEvent other{MouseEventType::rightDown, 1, 8};
  EXPECT_EQ(this->world_.send(other), other);
  EXPECT_EQ(this->world_.send(this->press_), std::nullopt);
}

TYPED_TEST_P(EventTapsContract, anEventMayBeRewrittenInPlace) {
  const auto tap = this->install([](TappedEvent& event) {
    event.setType(MouseEventType::otherDown);
    event.setButton(kMiddleButton);
    return TapAnswer::pass;
  });
  tap->enable(true);
  EXPECT_EQ(this->world_.send(this->press_),
            (WorldEvent{MouseEventType::otherDown, kMiddleButton, 7}));
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
  this->world_.send(this->press_);
  EXPECT_EQ(order, (std::vector{2, 1}));
}

TYPED_TEST_P(EventTapsContract, aRemovedTapSeesNothing) {
  auto tap = this->install([](TappedEvent&) { return TapAnswer::drop; });
  tap->enable(true);
  tap.reset();
  EXPECT_EQ(this->world_.send(this->press_), this->press_);
}

TYPED_TEST_P(EventTapsContract, aRefusedTapIsNull) {
  this->world_.refuse(TapLocation::session);
  EXPECT_EQ(this->install({}), nullptr);
  EXPECT_NE(this->world_.taps().install(TapLocation::hid, this->kLeftDownOnly, {}), nullptr);
}

TYPED_TEST_P(EventTapsContract, aDisabledTapIsToldAndMayComeBack) {
  const auto tap = this->install([](TappedEvent&) { return TapAnswer::drop; });
  tap->enable(true);
  this->world_.disable(TapDisabled::byTimeout, true);
  EXPECT_EQ(this->disabled_, std::vector{TapDisabled::byTimeout});
  EXPECT_FALSE(tap->enabled());
  EXPECT_EQ(this->world_.send(this->press_), this->press_);
  tap->enable(true);
  EXPECT_TRUE(tap->enabled());
  EXPECT_EQ(this->world_.send(this->press_), std::nullopt);
}

TYPED_TEST_P(EventTapsContract, aTapThatDoesNotReviveStaysDisabled) {
  const auto tap = this->install([](TappedEvent&) { return TapAnswer::drop; });
  tap->enable(true);
  this->world_.disable(TapDisabled::byUserInput, false);
  EXPECT_EQ(this->disabled_, std::vector{TapDisabled::byUserInput});
  tap->enable(true);
  EXPECT_FALSE(tap->enabled());
}

TYPED_TEST_P(EventTapsContract, aTapMayRemoveItself) {
  std::unique_ptr<InstalledTap> tap = this->install([&](TappedEvent&) {
    tap.reset();
    return TapAnswer::pass;
  });
  tap->enable(true);
  EXPECT_EQ(this->world_.send(this->press_), this->press_);
  EXPECT_EQ(tap, nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(EventTapsContract, aNewTapPassesEverythingUntilItIsEnabled,
                            onlyTypesOfTheMaskAreSeen, anEventMayBeRewrittenInPlace,
                            theNewestTapIsFirst, aRemovedTapSeesNothing, aRefusedTapIsNull,
                            aDisabledTapIsToldAndMayComeBack, aTapThatDoesNotReviveStaysDisabled,
                            aTapMayRemoveItself);

}  // namespace velotap::test
