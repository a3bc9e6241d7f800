#include "adapters/linux/clicks/frame_merger.hpp"

#include <gtest/gtest.h>

#include "../evdev/event_maker.hpp"

namespace velotap::test {
namespace {

using Events = std::vector<input_event>;

std::string spoken(const Events& events) {
  std::string text;
  for (const input_event& e : events) {
    text +=
        std::to_string(e.type) + ":" + std::to_string(e.code) + "=" + std::to_string(e.value) + " ";
  }
  return text;
}

TEST(FrameMerger, waysAddUp) {
  FrameMerger merger;
  merger.add(Events{event(EV_REL, REL_X, 3), event(EV_REL, REL_WHEEL_HI_RES, 20)}, 0);
  merger.add(Events{event(EV_REL, REL_X, -5), event(EV_REL, REL_Y, 2)}, 0);
  EXPECT_EQ(spoken(merger.take(0)),
            spoken({event(EV_REL, REL_X, -2), event(EV_REL, REL_WHEEL_HI_RES, 20),
                    event(EV_REL, REL_Y, 2)}));
  EXPECT_TRUE(merger.empty());
}

TEST(FrameMerger, ofPositionsTheLastCountsForEachContact) {
  FrameMerger merger;
  merger.add(Events{event(EV_ABS, ABS_MT_POSITION_X, 1), event(EV_ABS, ABS_MT_SLOT, 2),
                    event(EV_ABS, ABS_MT_POSITION_X, 2), event(EV_ABS, ABS_X, 1)},
             0);
  merger.add(Events{event(EV_ABS, ABS_MT_POSITION_X, 3), event(EV_ABS, ABS_X, 9)}, 2);
  EXPECT_EQ(spoken(merger.take(2)),
            spoken({event(EV_ABS, ABS_X, 9), event(EV_ABS, ABS_MT_SLOT, 0),
                    event(EV_ABS, ABS_MT_POSITION_X, 1), event(EV_ABS, ABS_MT_SLOT, 2),
                    event(EV_ABS, ABS_MT_POSITION_X, 3)}));
}

TEST(FrameMerger, leavesTheSlotThatFollowingEventsAreAbout) {
  FrameMerger merger;
  merger.add(Events{event(EV_ABS, ABS_MT_POSITION_X, 1)}, 4);
  EXPECT_EQ(spoken(merger.take(1)),
            spoken({event(EV_ABS, ABS_MT_SLOT, 4), event(EV_ABS, ABS_MT_POSITION_X, 1),
                    event(EV_ABS, ABS_MT_SLOT, 1)}));
}

TEST(FrameMerger, whatComesDownOrIsPressedIsNotMerged) {
  EXPECT_TRUE(FrameMerger::mergeable(Events{event(EV_REL, REL_X, 1)}));
  EXPECT_TRUE(FrameMerger::mergeable(Events{event(EV_ABS, ABS_MT_POSITION_Y, 1)}));
  EXPECT_FALSE(FrameMerger::mergeable(Events{event(EV_ABS, ABS_MT_TRACKING_ID, 1)}));
  EXPECT_FALSE(FrameMerger::mergeable(Events{event(EV_KEY, BTN_TOUCH, 1)}));
}

}  // namespace
}  // namespace velotap::test
