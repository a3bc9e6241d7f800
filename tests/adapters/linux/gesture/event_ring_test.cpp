#include "adapters/linux/gesture/event_ring.hpp"

#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <vector>

namespace velotap {
namespace {

TEST(EventRing, givesItemsInTheirOrder) {
  EventRing<int, 4> ring;
  EXPECT_FALSE(ring.pop());
  EXPECT_TRUE(ring.push(1));
  EXPECT_TRUE(ring.push(2));
  EXPECT_EQ(ring.pop(), 1);
  EXPECT_EQ(ring.pop(), 2);
  EXPECT_FALSE(ring.pop());
}

TEST(EventRing, holdsItsSizeAndRefusesOneMore) {
  EventRing<int, 4> ring;
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(ring.push(i));
    EXPECT_FALSE(ring.push(99));
    for (int i = 0; i < 4; ++i) EXPECT_EQ(ring.pop(), i);
    EXPECT_FALSE(ring.pop());
  }
}

TEST(EventRing, losesNothingBetweenManyThreadsAndKeepsEachOnesOrder) {
  constexpr int kThreads = 4;
  constexpr int kItems = 20'000;
  EventRing<int, 64> ring;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kItems; ++i) {
        while (!ring.push(t * kItems + i)) std::this_thread::yield();
      }
    });
  }
  std::array<int, kThreads> next{};
  for (int got = 0; got < kThreads * kItems;) {
    const auto item = ring.pop();
    if (!item) {
      std::this_thread::yield();
      continue;
    }
    const auto thread = static_cast<std::size_t>(*item / kItems);
    EXPECT_EQ(*item % kItems, next[thread]++);
    ++got;
  }
  for (auto& thread : threads) thread.join();
  EXPECT_FALSE(ring.pop());
}

}  // namespace
}  // namespace velotap
