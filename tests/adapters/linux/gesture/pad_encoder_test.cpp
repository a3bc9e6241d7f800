#include "adapters/linux/gesture/pad_encoder.hpp"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace velotap {
namespace {

using Event = std::tuple<int, int, int>;

std::vector<Event> encoded(PadEncoder& encoder, const PadFrame& frame) {
  std::vector<Event> events;
  for (const auto& e : encoder.encode(frame)) events.emplace_back(e.type, e.code, e.value);
  return events;
}

const PadFrame kTwo{{Point{10, 20}, Point{30, 40}}};

TEST(PadEncoder, landingTellsEachContactAndTheSummary) {
  PadEncoder encoder;
  EXPECT_EQ(encoded(encoder, kTwo), (std::vector<Event>{{EV_ABS, ABS_MT_SLOT, 0},
                                                        {EV_ABS, ABS_MT_TRACKING_ID, 0},
                                                        {EV_ABS, ABS_MT_POSITION_X, 2000},
                                                        {EV_ABS, ABS_MT_POSITION_Y, 4000},
                                                        {EV_ABS, ABS_MT_SLOT, 1},
                                                        {EV_ABS, ABS_MT_TRACKING_ID, 1},
                                                        {EV_ABS, ABS_MT_POSITION_X, 6000},
                                                        {EV_ABS, ABS_MT_POSITION_Y, 8000},
                                                        {EV_KEY, BTN_TOOL_DOUBLETAP, 1},
                                                        {EV_KEY, BTN_TOUCH, 1},
                                                        {EV_ABS, ABS_X, 2000},
                                                        {EV_ABS, ABS_Y, 4000},
                                                        {EV_SYN, SYN_REPORT, 0}}));
}

TEST(PadEncoder, movingTellsPositionsAlone) {
  PadEncoder encoder;
  (void)encoder.encode(kTwo);
  EXPECT_EQ(encoded(encoder, PadFrame{{Point{10, 20}, Point{30.5, 40.005}}}),
            (std::vector<Event>{{EV_ABS, ABS_MT_SLOT, 1},
                                {EV_ABS, ABS_MT_POSITION_X, 6100},
                                {EV_ABS, ABS_MT_POSITION_Y, 8001},
                                {EV_ABS, ABS_X, 2000},
                                {EV_ABS, ABS_Y, 4000},
                                {EV_SYN, SYN_REPORT, 0}}));
}

TEST(PadEncoder, aFrameWithoutAChangeIsEmpty) {
  PadEncoder encoder;
  EXPECT_TRUE(encoder.encode(PadFrame{}).empty());
  (void)encoder.encode(kTwo);
  EXPECT_TRUE(encoder.encode(kTwo).empty());
}

TEST(PadEncoder, liftingOneLeavesOneFinger) {
  PadEncoder encoder;
  (void)encoder.encode(kTwo);
  EXPECT_EQ(encoded(encoder, PadFrame{{Point{10, 20}, std::nullopt}}),
            (std::vector<Event>{{EV_ABS, ABS_MT_SLOT, 1},
                                {EV_ABS, ABS_MT_TRACKING_ID, -1},
                                {EV_KEY, BTN_TOOL_DOUBLETAP, 0},
                                {EV_KEY, BTN_TOOL_FINGER, 1},
                                {EV_ABS, ABS_X, 2000},
                                {EV_ABS, ABS_Y, 4000},
                                {EV_SYN, SYN_REPORT, 0}}));
  EXPECT_EQ(encoded(encoder, PadFrame{}), (std::vector<Event>{{EV_ABS, ABS_MT_SLOT, 0},
                                                              {EV_ABS, ABS_MT_TRACKING_ID, -1},
                                                              {EV_KEY, BTN_TOOL_FINGER, 0},
                                                              {EV_KEY, BTN_TOUCH, 0},
                                                              {EV_SYN, SYN_REPORT, 0}}));
}

TEST(PadEncoder, liftingBothIsOneFrame) {
  PadEncoder encoder;
  (void)encoder.encode(kTwo);
  EXPECT_EQ(encoded(encoder, PadFrame{}), (std::vector<Event>{{EV_ABS, ABS_MT_SLOT, 0},
                                                              {EV_ABS, ABS_MT_TRACKING_ID, -1},
                                                              {EV_ABS, ABS_MT_SLOT, 1},
                                                              {EV_ABS, ABS_MT_TRACKING_ID, -1},
                                                              {EV_KEY, BTN_TOOL_DOUBLETAP, 0},
                                                              {EV_KEY, BTN_TOUCH, 0},
                                                              {EV_SYN, SYN_REPORT, 0}}));
}

TEST(PadEncoder, everyLandingHasItsOwnIdsAndTheyWrap) {
  PadEncoder encoder;
  int last = -1;
  for (int i = 0; i < 40'000; ++i) {
    for (const auto& e : encoder.encode(kTwo)) {
      if (e.code != ABS_MT_TRACKING_ID || e.type != EV_ABS) continue;
      EXPECT_EQ(e.value, last == kLastTrackingId ? 0 : last + 1);
      last = e.value;
    }
    (void)encoder.encode(PadFrame{});
  }
  EXPECT_EQ(last, 80'000 % (kLastTrackingId + 1) - 1);
}

}  // namespace
}  // namespace velotap
