#include "output/recent_physical_mouse_events.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

namespace velotap {
namespace {

TEST(RecentPhysicalMouseEvents, KnowsOnlyWhatItSaw) {
  RecentPhysicalMouseEvents events;
  EXPECT_FALSE(events.contains(7, 0));
  events.record(7, 10);
  EXPECT_TRUE(events.contains(7, 10));
  EXPECT_FALSE(events.contains(8, 10));
  EXPECT_FALSE(events.contains(-7, 10));
}

TEST(RecentPhysicalMouseEvents, ASightingCountsForTwoSecondsInclusive) {
  RecentPhysicalMouseEvents events;
  events.record(7, 10);
  EXPECT_TRUE(events.contains(7, 12));
  EXPECT_FALSE(events.contains(7, std::nextafter(12.0, 13.0)));
  EXPECT_FALSE(events.contains(7, 12)) << "what was pruned stays pruned";
}

TEST(RecentPhysicalMouseEvents, ANewerSightingOfTheSameNumberStays) {
  RecentPhysicalMouseEvents events;
  events.record(7, 10);
  events.record(7, 11.5);
  events.prune(12.5);
  EXPECT_TRUE(events.contains(7, 13.5));
  EXPECT_FALSE(events.contains(7, 13.6));
}

TEST(RecentPhysicalMouseEvents, TheSameNumberTwiceAtOneTimeIsForgottenOnce) {
  RecentPhysicalMouseEvents events;
  events.record(7, 10);
  events.record(7, 10);
  EXPECT_TRUE(events.contains(7, 12));
  EXPECT_FALSE(events.contains(7, 12.5));
}

TEST(RecentPhysicalMouseEvents, ResetForgetsEverything) {
  RecentPhysicalMouseEvents events;
  for (int i = 0; i < 300; ++i) events.record(i, 10);
  events.prune(13);
  for (int i = 0; i < 300; ++i) events.record(i, 13);
  events.reset();
  EXPECT_EQ(events.timelineLength(), 0U);
  EXPECT_FALSE(events.contains(5, 13));
  events.record(5, 13);
  EXPECT_TRUE(events.contains(5, 13));
}

TEST(RecentPhysicalMouseEvents, FewDeadEntriesStayWhereTheyAre) {
  RecentPhysicalMouseEvents events;
  for (int i = 0; i < 127; ++i) events.record(i, 10);
  events.prune(20);
  EXPECT_EQ(events.timelineLength(), 127U);
}

TEST(RecentPhysicalMouseEvents, ManyDeadEntriesAreDroppedInBulk) {
  RecentPhysicalMouseEvents events;
  for (int i = 0; i < 128; ++i) events.record(i, 10);
  events.prune(20);
  EXPECT_EQ(events.timelineLength(), 0U);
}

TEST(RecentPhysicalMouseEvents, DeadEntriesAreDroppedOnlyWhenTheyAreHalf) {
  RecentPhysicalMouseEvents events;
  for (int i = 0; i < 128; ++i) events.record(i, 10);
  for (int i = 0; i < 129; ++i) events.record(1000 + i, 11.5);
  events.prune(12.5);
  EXPECT_EQ(events.timelineLength(), 257U) << "one living entry more than dead ones";
  RecentPhysicalMouseEvents half;
  for (int i = 0; i < 128; ++i) half.record(i, 10);
  for (int i = 0; i < 128; ++i) half.record(1000 + i, 11.5);
  half.prune(12.5);
  EXPECT_EQ(half.timelineLength(), 128U);
  for (int i = 0; i < 128; ++i) EXPECT_TRUE(half.contains(1000 + i, 13.5));
}

TEST(RecentPhysicalMouseEvents, MemoryStaysBoundedUnderASteadyStream) {
  RecentPhysicalMouseEvents events;
  std::size_t longest = 0;
  for (int i = 0; i < 100000; ++i) {
    events.record(i, 10 + i * 0.01);  // 200 living entries at any time
    longest = std::max(longest, events.timelineLength());
  }
  EXPECT_LE(longest, 2 * 201U + 1);
}

// Against the plain meaning: a number counts when its newest sighting is at most 2 s old.
TEST(RecentPhysicalMouseEvents, AgreesWithAPlainModel) {
  std::mt19937 random(20240711);
  RecentPhysicalMouseEvents events;
  std::map<std::int64_t, double> newest;
  double now = 0;
  const auto below = [&random](int n) { return std::uniform_int_distribution(0, n - 1)(random); };
  for (int step = 0; step < 50000; ++step) {
    now += below(4) == 0 ? 0.25 * below(5) : 0.0078125 * below(4);  // exact in binary
    const std::int64_t number = below(40);
    switch (below(20)) {
      case 0:
        events.prune(now);
        break;
      case 1:
        if (below(50) == 0) {
          events.reset();
          newest.clear();
        }
        break;
      case 2:
      case 3:
      case 4:
      case 5:
      case 6:
      case 7:
      case 8:
        events.record(number, now);
        newest[number] = now;
        break;
      default: {
        const auto found = newest.find(number);
        const bool expected = found != newest.end() && now - found->second <= 2.0;
        ASSERT_EQ(events.contains(number, now), expected) << "step " << step;
      }
    }
  }
}

}  // namespace
}  // namespace velotap
