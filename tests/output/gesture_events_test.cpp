#include "output/gesture_events.hpp"

#include <gtest/gtest.h>

#include "support/recording_events.hpp"

namespace velotap {
namespace {

using Lines = std::vector<std::string>;

TEST(GestureEvents, AKeystrokeIsAPressAndAReleaseWithExactlyTheseFlags) {
  test::RecordingEvents events;
  GestureEvents::postKeystroke(events, 33, kCommandFlag);
  EXPECT_EQ(events.take(), (Lines{"key 33 down flags=1048576", "key 33 up flags=1048576"}));
  GestureEvents::postKeystroke(events, 65535, 0);
  EXPECT_EQ(events.take(), (Lines{"key 65535 down flags=0", "key 65535 up flags=0"}));
}

TEST(GestureEvents, NothingIsPostedWhenEitherEventCannotBeMade) {
  test::RecordingEvents events;
  events.failKeyUp = true;
  GestureEvents::postKeystroke(events, 33, kCommandFlag);
  EXPECT_EQ(events.take(), Lines{}) << "a press without its release would repeat for ever";
  events.failKeyUp = false;
  events.failKeyDown = true;
  GestureEvents::postKeystroke(events, 33, kCommandFlag);
  EXPECT_EQ(events.take(), Lines{});
}

}  // namespace
}  // namespace velotap
