// A mutex for stretches of a few hundred instructions that almost never meet: taking and giving it
// back uncontended is two atomic operations in line, a tenth of what the library's mutex costs. A
// frame takes four locks, so this is a third of what a frame costs.
//
// A thread that has to wait sleeps in the kernel. Not recursive, not fair. Works with
// std::lock_guard.
#pragma once

#include <atomic>
#include <cstdint>

namespace velotap {

class LightMutex {
 public:
  void lock() noexcept {
    State expected = kFree;
    if (!state_.compare_exchange_strong(expected, kHeld, std::memory_order_acquire,
                                        std::memory_order_relaxed)) {
      lockContended();
    }
  }
  void unlock() noexcept {
    if (state_.exchange(kFree, std::memory_order_release) == kHeldWithWaiters) {
      state_.notify_one();
    }
  }

 private:
  using State = std::int32_t;  // the width that the kernel waits on directly
  static constexpr State kFree = 0;
  static constexpr State kHeld = 1;
  static constexpr State kHeldWithWaiters = 2;

  // Once a thread has waited it takes the lock as one with waiters: it cannot know that it was the
  // only one, and waking nobody is harmless.
  void lockContended() noexcept {
    while (state_.exchange(kHeldWithWaiters, std::memory_order_acquire) != kFree) {
      state_.wait(kHeldWithWaiters, std::memory_order_relaxed);
    }
  }

  std::atomic<State> state_{kFree};
};

}  // namespace velotap
