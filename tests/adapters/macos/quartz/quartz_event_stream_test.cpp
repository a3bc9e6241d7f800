#include "adapters/macos/quartz/quartz_event_stream.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_quartz.hpp"

namespace velotap::test {
namespace {

class QuartzEventStreamTest : public ::testing::Test {
 protected:
  FakeCoreFoundation cf_;
  FakeQuartz quartz_{cf_};
  QuartzEventStream events_{cf_.api(), quartz_.api(), quartz_.runtime()};
};

TEST_F(QuartzEventStreamTest, thePointerIsReadFromAnEmptyEvent) {
  quartz_.pointer = {3.5, -7};
  EXPECT_EQ(events_.pointerLocation(), (Point{3.5, -7}));
  quartz_.succeedOnly["CGEventCreate"] = 0;
  EXPECT_EQ(events_.pointerLocation(), std::nullopt);
}

TEST_F(QuartzEventStreamTest, aMouseEventIsPostedAtTheHidLevelAsItWasMade) {
  const auto press = events_.makeMouse(MouseEventType::otherDown, kMiddleButton, {10, 20});
  ASSERT_TRUE(press);
  EXPECT_TRUE(quartz_.posts.empty());
  events_.post(*press);
  ASSERT_EQ(quartz_.posts.size(), 1U);
  const FakePost& post = quartz_.posts.front();
  EXPECT_EQ(post.location, kCGHIDEventTap);
  EXPECT_EQ(post.event.type, kCGEventOtherMouseDown);
  EXPECT_EQ(post.event.button, kCGMouseButtonCenter);
  EXPECT_EQ(post.event.location.x, 10);
  EXPECT_EQ(post.event.location.y, 20);
  EXPECT_FALSE(post.event.flags) << "no flags beyond what creation gives";
  EXPECT_TRUE(post.event.integers.empty());
}

TEST_F(QuartzEventStreamTest, aCopyOfAnEventSharesItAndTheLastOneReleasesIt) {
  auto event = events_.makeMouse(MouseEventType::otherUp, kMiddleButton, {});
  const MouseEvent copy = *event;
  event.reset();
  events_.post(copy);
  events_.post(copy);
  EXPECT_EQ(quartz_.posts.size(), 2U);
}

TEST_F(QuartzEventStreamTest, whatCannotBeMadeIsNothing) {
  quartz_.succeedOnly["CGEventCreateMouseEvent"] = 0;
  quartz_.succeedOnly["CGEventCreateKeyboardEvent"] = 0;
  EXPECT_FALSE(events_.makeMouse(MouseEventType::otherDown, kMiddleButton, {}));
  EXPECT_FALSE(events_.makeKey(33, true));
}

TEST_F(QuartzEventStreamTest, aKeyCarriesTheFlagsThatItHasWhenItIsPosted) {
  auto press = events_.makeKey(33, true);
  auto release = events_.makeKey(33, false);
  ASSERT_TRUE(press && release);
  press->flags = kCommandFlag;
  events_.post(*press);
  events_.post(*release);
  ASSERT_EQ(quartz_.posts.size(), 2U);
  EXPECT_EQ(quartz_.posts[0].event.key, 33);
  EXPECT_TRUE(quartz_.posts[0].event.down);
  EXPECT_EQ(quartz_.posts[0].event.flags, kCGEventFlagMaskCommand);
  EXPECT_EQ(quartz_.posts[0].location, kCGHIDEventTap);
  EXPECT_FALSE(quartz_.posts[1].event.down);
  EXPECT_EQ(quartz_.posts[1].event.flags, 0U) << "held modifiers are replaced, not kept";
}

TEST_F(QuartzEventStreamTest, eventsThatAreNotOursArePassedOver) {
  events_.post(MouseEvent{});
  events_.post(KeyEvent{});
  EXPECT_TRUE(quartz_.posts.empty());
}

TEST_F(QuartzEventStreamTest, magnifyingSaysSoByTypeAndFieldNumbers) {
  events_.post(GestureEvent{GestureKind::magnify, GesturePhase::changed, 0.05, {1, 2}});
  ASSERT_EQ(quartz_.posts.size(), 1U);
  const FakeEvent& event = quartz_.posts[0].event;
  EXPECT_EQ(quartz_.posts[0].location, kCGHIDEventTap);
  EXPECT_EQ(static_cast<int>(event.type), 29);
  EXPECT_EQ(event.integers, (std::map<std::uint32_t, std::int64_t>{{110, 8}, {132, 2}}));
  EXPECT_EQ(event.reals, (std::map<std::uint32_t, double>{{113, 0.05}}));
  EXPECT_EQ(event.flags, 0U);
  EXPECT_EQ(event.location.x, 1);
  EXPECT_EQ(event.location.y, 2);
}

TEST_F(QuartzEventStreamTest, rotatingHasItsOwnTypeAndField) {
  for (const GesturePhase phase :
       {GesturePhase::began, GesturePhase::changed, GesturePhase::ended, GesturePhase::cancelled}) {
    events_.post(GestureEvent{GestureKind::rotate, phase, -1.5, {}});
    const FakeEvent& event = quartz_.posts.back().event;
    EXPECT_EQ(event.integers, (std::map<std::uint32_t, std::int64_t>{
                                  {110, 5}, {132, static_cast<std::int64_t>(phase)}}));
    EXPECT_EQ(event.reals, (std::map<std::uint32_t, double>{{114, -1.5}}));
  }
}

TEST_F(QuartzEventStreamTest, aGestureThatCannotBeMadeIsNotPosted) {
  quartz_.succeedOnly["CGEventCreate"] = 0;
  events_.post(GestureEvent{});
  EXPECT_TRUE(quartz_.posts.empty());
}

// On a touch thread the first keyboard event would end the process.
TEST(QuartzEventStreamStartTest, oneKeyIsMadeAtTheStartAndNeverPosted) {
  FakeCoreFoundation cf;
  FakeQuartz quartz(cf);
  quartz.succeedOnly["CGEventCreateKeyboardEvent"] = 1;
  QuartzEventStream events(cf.api(), quartz.api(), quartz.runtime());
  EXPECT_TRUE(quartz.posts.empty());
  EXPECT_FALSE(events.makeKey(0, true)) << "the only one allowed was made by the constructor";
}

}  // namespace
}  // namespace velotap::test
