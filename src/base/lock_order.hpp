// The one order in which the locks of the core are taken, and a mutex that checks it.
//
// A thread that holds a lock may only take locks of a later rank. Debug builds abort on a
// violation, naming both ranks; release builds only lock.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <mutex>  // std::lock_guard, for every user

#include "base/light_mutex.hpp"

namespace velotap {

/// Earlier enumerators are taken first; `leaf` comes last: its owner takes no other lock inside.
enum class LockRank { engine, pinch, appTracker, practiceTarget, tapActivityLog, keyCodes, leaf };

namespace detail {
/// One bit for each rank that this thread holds.
inline thread_local unsigned heldLockRanks = 0;
}  // namespace detail

template <LockRank Rank>
class OrderedMutex {
 public:
  void lock() {
    noteTaking();
    mutex_.lock();
  }
  void unlock() {
    mutex_.unlock();
    noteGiven();
  }

 private:
  static constexpr unsigned kBit = 1U << static_cast<unsigned>(Rank);

#ifdef NDEBUG
  static void noteTaking() noexcept {}
  static void noteGiven() noexcept {}
#else
  static void noteTaking() noexcept {
    if (detail::heldLockRanks >= kBit) {
      std::fprintf(stderr, "lock order violated: rank %d taken while holding ranks 0x%x\n",
                   static_cast<int>(Rank), detail::heldLockRanks);
      std::abort();
    }
    detail::heldLockRanks |= kBit;
  }
  static void noteGiven() noexcept {
    detail::heldLockRanks &= ~kBit;
  }
#endif

  LightMutex mutex_;
};

}  // namespace velotap
