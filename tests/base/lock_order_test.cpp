#include "base/lock_order.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(LockOrder, risingRanksAreFine) {
  OrderedMutex<LockRank::engine> engine;
  OrderedMutex<LockRank::pinch> pinch;
  for (int i = 0; i < 2; ++i) {
    const std::lock_guard outer(engine);
    const std::lock_guard inner(pinch);
  }
}

#if !defined(NDEBUG) && !defined(__SANITIZE_THREAD__)
TEST(LockOrderDeathTest, fallingRanksEndTheProcess) {
  OrderedMutex<LockRank::engine> engine;
  OrderedMutex<LockRank::pinch> pinch;
  EXPECT_DEATH(
      {
        const std::lock_guard outer(pinch);
        const std::lock_guard inner(engine);
      },
      "lock order violated");
}
#endif

}  // namespace
}  // namespace velotap
