#include "output/middle_click.hpp"

#include <gtest/gtest.h>

#include "support/desktop.hpp"

namespace velotap {
namespace {

using test::Lines;

class MiddleClick : public ::testing::Test, protected test::Desktop {
 protected:
  void cannotMake(MouseEventType failing) {
    events.setMouseFailure([failing](MouseEventType type) { return type == failing; });
  }
};

TEST_F(MiddleClick, APairIsPressThenReleaseOfTheMiddleButton) {
  const auto pair = middleEvents(events, {3, 4});
  ASSERT_TRUE(pair);
  EXPECT_EQ((*pair)[0].type, MouseEventType::otherDown);
  EXPECT_EQ((*pair)[1].type, MouseEventType::otherUp);
  for (const MouseEvent& event : *pair) {
    EXPECT_EQ(event.button, 2);
    EXPECT_EQ(event.location, (Point{3, 4}));
  }
  EXPECT_EQ(posted.take(), Lines{}) << "making is not posting";
}

TEST_F(MiddleClick, ThereIsNoPairWhenEitherEventCannotBeMade) {
  cannotMake(MouseEventType::otherDown);
  EXPECT_FALSE(middleEvents(events, {}));
  cannotMake(MouseEventType::otherUp);
  EXPECT_FALSE(middleEvents(events, {}));
}

TEST_F(MiddleClick, PostsOneClickAtThePointerAndSaysSo) {
  postMiddle(events, log);
  EXPECT_EQ(posted.take(),
            (Lines{"mouse down 2 at (512.0, 384.5)", "mouse up 2 at (512.0, 384.5)"}));
  EXPECT_EQ(said.take(), Lines{"posted middle click at (512.0, 384.5)"});
}

TEST_F(MiddleClick, BothEventsStayTogetherWhileThePointerMoves) {
  const Observation moving = events.observePosts([this](const PostedEvent&) {
    events.setPointer(Point{1, 1});
  });
  postMiddle(events, log);
  EXPECT_EQ(posted.take(),
            (Lines{"mouse down 2 at (512.0, 384.5)", "mouse up 2 at (512.0, 384.5)"}));
}

TEST_F(MiddleClick, WithoutAPointerItClicksAtTheOrigin) {
  events.setPointer(std::nullopt);
  postMiddle(events, log);
  EXPECT_EQ(posted.take(), (Lines{"mouse down 2 at (0.0, 0.0)", "mouse up 2 at (0.0, 0.0)"}));
  EXPECT_EQ(said.take(), Lines{"posted middle click at (0.0, 0.0)"});
}

TEST_F(MiddleClick, PostsAndSaysNothingWhenAnEventCannotBeMade) {
  cannotMake(MouseEventType::otherUp);
  postMiddle(events, log);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(said.take(), Lines{});
}

TEST_F(MiddleClick, ALoneReleaseIsPostedWhetherOrNotAButtonIsHeld) {
  postMiddleRelease(events, log);
  EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_EQ(said.take(), Lines{"cancelled held middle click at (512.0, 384.5)"});
}

TEST_F(MiddleClick, AReleaseThatCannotBeMadeIsStillReported) {
  cannotMake(MouseEventType::otherUp);
  events.setPointer(std::nullopt);
  postMiddleRelease(events, log);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(said.take(), Lines{"cancelled held middle click at (0.0, 0.0)"});
}

TEST_F(MiddleClick, IsSilentWhenNobodyAsked) {
  log.setEnabled(false);
  postMiddle(events, log);
  postMiddleRelease(events, log);
  EXPECT_EQ(said.take(), Lines{});
  EXPECT_EQ(posted.take().size(), 3U);
}

}  // namespace
}  // namespace velotap
