#include "base/light_mutex.hpp"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>
#include <vector>

namespace velotap {
namespace {

TEST(LightMutex, countsOfManyThreadsAddUp) {
  LightMutex mutex;
  long count = 0;
  constexpr int kThreads = 4;
  constexpr int kRounds = 20000;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < kRounds; ++i) {
        const std::lock_guard guard(mutex);
        ++count;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, long{kThreads} * kRounds);
}

// A waiter must be woken by every unlock, also by that of a thread that waited itself.
TEST(LightMutex, waitersTakeTurnsWithoutBeingForgotten) {
  LightMutex mutex;
  int turn = 0;
  const auto alternate = [&](int mine) {
    for (int done = 0; done < 500;) {
      const std::lock_guard guard(mutex);
      if (turn % 2 == mine) {
        ++turn;
        ++done;
      }
    }
  };
  std::thread even(alternate, 0);
  std::thread odd(alternate, 1);
  even.join();
  odd.join();
  EXPECT_EQ(turn, 1000);
}

}  // namespace
}  // namespace velotap
