#include "settings/retained_touches.hpp"

#include <gtest/gtest.h>

#include <thread>

#include "support/desktop.hpp"
#include "tap_activities.hpp"

namespace velotap {
namespace {

RetainedTouch touch(int second, double duration, double drift) {
  return {.end = test::atSecond(second), .duration = duration, .drift = drift};
}

TEST(ReplayedTouches, AreJudgedInclusively) {
  const std::vector<RetainedTouch> touches = {touch(1, 0.3, 0.05), touch(2, 0.301, 0.05),
                                              touch(3, 0.3, 0.051)};
  EXPECT_EQ(replayTouches(touches, {.duration = 0.3, .drift = 0.05}),
            (ReplayedTouches{.accepted = 1, .total = 3}));
  EXPECT_EQ(replayTouches(touches, {.duration = 0.31, .drift = 0.05}),
            (ReplayedTouches{.accepted = 2, .total = 3}));
  EXPECT_EQ(replayTouches(touches, {.duration = 0.31, .drift = 0.06}),
            (ReplayedTouches{.accepted = 3, .total = 3}));
  EXPECT_EQ(replayTouches({}, {}), ReplayedTouches{});
}

// Two quick taps are two clicks under a short limit and one under a long limit, whose pause after a
// click is longer.
TEST(ReplayedTouches, MakeTheNextOneTooSoon) {
  std::vector<RetainedTouch> touches = {touch(1, 0.1, 0), touch(1, 0.1, 0)};
  touches[1].end += std::chrono::milliseconds(100);
  EXPECT_EQ(replayTouches(touches, {.duration = 0.3, .drift = 0.05}).accepted, 2);
  EXPECT_EQ(replayTouches(touches, {.duration = 0.5, .drift = 0.05}).accepted, 1);
}

TEST(RetainedTouches, KeepTheLastFifty) {
  test::Desktop desktop;
  TapActivityLog log(desktop.mainQueue, desktop.notifications);
  RetainedTouches retained(log);
  EXPECT_TRUE(retained.touches().empty());
  for (int i = 1; i <= 50; ++i) log.record(test::tapNumber(i));
  ASSERT_EQ(retained.touches().size(), 50U);
  EXPECT_EQ(retained.touches().front().end, test::atSecond(1001));
  log.record(test::tapNumber(51));
  ASSERT_EQ(retained.touches().size(), 50U);
  EXPECT_EQ(retained.touches().front().end, test::atSecond(1002));
  EXPECT_EQ(retained.touches().back().end, test::atSecond(1051));
  log.clear();
  EXPECT_EQ(retained.touches().size(), 50U) << "clearing the list on screen forgets no evidence";
  retained.clear();
  EXPECT_TRUE(retained.touches().empty());
}

TEST(RetainedTouches, AreRecordedWhileTheyAreRead) {
  test::Desktop desktop;
  TapActivityLog log(desktop.mainQueue, desktop.notifications);
  RetainedTouches retained(log);
  std::thread frames([&log] {
    for (int i = 0; i < 500; ++i) log.record(test::tapNumber(i));
  });
  for (int i = 0; i < 500; ++i) EXPECT_LE(retained.touches().size(), 50U);
  frames.join();
  EXPECT_EQ(retained.touches().size(), 50U);
}

}  // namespace
}  // namespace velotap
