#include "adapters/linux/gesture/wheel_zoom.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

#include "adapters/linux/gesture/gesture_player.hpp"

namespace velotap {
namespace {

using enum GestureKind;
using enum GesturePhase;
using Event = std::tuple<int, int, int>;

std::vector<Event> listed(const WheelEvents& events) {
  std::vector<Event> list;
  for (const auto& e : events) list.emplace_back(e.type, e.code, e.value);
  return list;
}

TEST(WheelZoom, oneNotchOfScaleIsOneNotchOfWheel) {
  WheelZoom zoom;
  EXPECT_TRUE(zoom.handle(magnify, began, 0, 1).empty());
  EXPECT_EQ(listed(zoom.handle(magnify, changed, kScaleOfNotch - 1, 1)),
            (std::vector<Event>{{EV_KEY, KEY_LEFTCTRL, 1},
                                {EV_SYN, SYN_REPORT, 0},
                                {EV_REL, REL_WHEEL, 1},
                                {EV_REL, REL_WHEEL_HI_RES, 120},
                                {EV_SYN, SYN_REPORT, 0}}));
  EXPECT_EQ(listed(zoom.handle(magnify, ended, 0, 1)),
            (std::vector<Event>{{EV_KEY, KEY_LEFTCTRL, 0}, {EV_SYN, SYN_REPORT, 0}}));
}

TEST(WheelZoom, shrinkingTurnsTheWheelBack) {
  WheelZoom zoom;
  (void)zoom.handle(magnify, began, 0, 1);
  const auto events = listed(zoom.handle(magnify, changed, 1 / kScaleOfNotch - 1, 1));
  ASSERT_EQ(events.size(), 5U);
  EXPECT_EQ(events[2], Event(EV_REL, REL_WHEEL, -1));
  EXPECT_EQ(events[3], Event(EV_REL, REL_WHEEL_HI_RES, -120));
}

TEST(WheelZoom, smallStepsAddUpInBothResolutions) {
  WheelZoom zoom;
  (void)zoom.handle(magnify, began, 0, 1);
  int fine = 0;
  int coarse = 0;
  for (int i = 0; i < 100; ++i) {
    for (const auto& [type, code, value] : listed(zoom.handle(magnify, changed, 0.01, 1))) {
      if (type == EV_REL && code == REL_WHEEL_HI_RES) fine += value;
      if (type == EV_REL && code == REL_WHEEL) coarse += value;
    }
  }
  const double notches = 100 * std::log(1.01) / std::log(kScaleOfNotch);
  EXPECT_NEAR(fine, notches * 120, 1);
  EXPECT_EQ(coarse, static_cast<int>(notches));
}

TEST(WheelZoom, controlStaysUpUntilTheWheelMoves) {
  WheelZoom zoom;
  (void)zoom.handle(magnify, began, 0, 1);
  EXPECT_TRUE(zoom.handle(magnify, changed, 0, 1).empty());
  EXPECT_FALSE(zoom.deadline());
  EXPECT_TRUE(zoom.handle(magnify, ended, 0, 1).empty());
}

TEST(WheelZoom, controlComesUpAtEveryEnd) {
  for (const auto phase : {ended, cancelled, began}) {
    WheelZoom zoom;
    (void)zoom.handle(magnify, began, 0, 1);
    (void)zoom.handle(magnify, changed, 0.5, 1);
    EXPECT_EQ(listed(zoom.handle(magnify, phase, 0, 1)),
              (std::vector<Event>{{EV_KEY, KEY_LEFTCTRL, 0}, {EV_SYN, SYN_REPORT, 0}}));
    EXPECT_TRUE(zoom.release().empty()) << "only once";
  }
}

TEST(WheelZoom, controlComesUpWhenNothingIsHeard) {
  WheelZoom zoom;
  (void)zoom.handle(magnify, began, 0, 1);
  (void)zoom.handle(magnify, changed, 0.5, 2);
  EXPECT_EQ(zoom.deadline(), 2 + kForgottenAfter);
  EXPECT_TRUE(zoom.expire(1.999 + kForgottenAfter).empty());
  EXPECT_EQ(zoom.expire(2 + kForgottenAfter).size(), 2U);
  EXPECT_FALSE(zoom.deadline());
}

TEST(WheelZoom, rotationIsIgnored) {
  WheelZoom zoom;
  (void)zoom.handle(magnify, began, 0, 1);
  (void)zoom.handle(magnify, changed, 0.5, 1);
  EXPECT_TRUE(zoom.handle(rotate, changed, 90, 1).empty());
  EXPECT_TRUE(zoom.handle(rotate, ended, 0, 1).empty());
  EXPECT_TRUE(zoom.deadline());
}

TEST(WheelZoom, numbersThatAreNoneMoveNothing) {
  WheelZoom zoom;
  (void)zoom.handle(magnify, began, 0, 1);
  EXPECT_TRUE(zoom.handle(magnify, changed, std::numeric_limits<double>::quiet_NaN(), 1).empty());
  EXPECT_TRUE(zoom.handle(magnify, changed, -std::numeric_limits<double>::infinity(), 1).empty());
}

TEST(WheelZoom, oneEventNeverMovesMoreThanItsLimit) {
  WheelZoom zoom;
  const auto events = listed(zoom.handle(magnify, changed, 1e9, 1));
  ASSERT_EQ(events.size(), 5U);
  EXPECT_EQ(std::get<2>(events[3]), static_cast<int>(std::log(2) / std::log(1.1) * 120));
}

}  // namespace
}  // namespace velotap
