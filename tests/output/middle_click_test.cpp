#include "output/middle_click.hpp"

#include <gtest/gtest.h>

#include "support/fake_ports.hpp"
#include "support/recording_events.hpp"

namespace velotap {
namespace {

using Lines = std::vector<std::string>;

class MiddleClick : public ::testing::Test {
 protected:
  test::RecordingEvents events_;
  test::RecordingLog log_;
};

TEST_F(MiddleClick, APairIsPressThenReleaseOfTheMiddleButton) {
  const auto pair = middleEvents(events_, {3, 4});
  ASSERT_TRUE(pair);
  EXPECT_EQ((*pair)[0].type, MouseEventType::otherDown);
  EXPECT_EQ((*pair)[1].type, MouseEventType::otherUp);
  for (const MouseEvent& event : *pair) {
    EXPECT_EQ(event.button, 2);
    EXPECT_EQ(event.location, (Point{3, 4}));
  }
  EXPECT_EQ(events_.take(), Lines{}) << "making is not posting";
}

TEST_F(MiddleClick, ThereIsNoPairWhenEitherEventCannotBeMade) {
  events_.failPress = true;
  EXPECT_FALSE(middleEvents(events_, {}));
  events_.failPress = false;
  events_.failRelease = true;
  EXPECT_FALSE(middleEvents(events_, {}));
}

TEST_F(MiddleClick, PostsOneClickAtThePointerAndSaysSo) {
  postMiddle(events_, log_);
  EXPECT_EQ(events_.take(),
            (Lines{"mouse down 2 at (512.0, 384.5)", "mouse up 2 at (512.0, 384.5)"}));
  EXPECT_EQ(log_.take(), Lines{"posted middle click at (512.0, 384.5)"});
}

TEST_F(MiddleClick, BothEventsStayTogetherWhileThePointerMoves) {
  events_.whenPosted = [this] { events_.movePointer(Point{1, 1}); };
  postMiddle(events_, log_);
  EXPECT_EQ(events_.take(),
            (Lines{"mouse down 2 at (512.0, 384.5)", "mouse up 2 at (512.0, 384.5)"}));
}

TEST_F(MiddleClick, WithoutAPointerItClicksAtTheOrigin) {
  events_.pointer = std::nullopt;
  postMiddle(events_, log_);
  EXPECT_EQ(events_.take(), (Lines{"mouse down 2 at (0.0, 0.0)", "mouse up 2 at (0.0, 0.0)"}));
  EXPECT_EQ(log_.take(), Lines{"posted middle click at (0.0, 0.0)"});
}

TEST_F(MiddleClick, PostsAndSaysNothingWhenAnEventCannotBeMade) {
  events_.failRelease = true;
  postMiddle(events_, log_);
  EXPECT_EQ(events_.take(), Lines{});
  EXPECT_EQ(log_.take(), Lines{});
}

TEST_F(MiddleClick, ALoneReleaseIsPostedWhetherOrNotAButtonIsHeld) {
  postMiddleRelease(events_, log_);
  EXPECT_EQ(events_.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_EQ(log_.take(), Lines{"cancelled held middle click at (512.0, 384.5)"});
}

TEST_F(MiddleClick, AReleaseThatCannotBeMadeIsStillReported) {
  events_.failRelease = true;
  events_.pointer = std::nullopt;
  postMiddleRelease(events_, log_);
  EXPECT_EQ(events_.take(), Lines{});
  EXPECT_EQ(log_.take(), Lines{"cancelled held middle click at (0.0, 0.0)"});
}

TEST_F(MiddleClick, IsSilentWhenNobodyAsked) {
  log_.on = false;
  postMiddle(events_, log_);
  postMiddleRelease(events_, log_);
  EXPECT_EQ(log_.take(), Lines{});
  EXPECT_EQ(events_.take().size(), 3U);
}

}  // namespace
}  // namespace velotap
