// The touches behind the last fifty outcomes, and how many of them other limits would accept.
//
// Of each touch only what the decision reads is kept: device, fingers, how long, how far, when.
// It is kept in memory, never saved, and gone with the process. Recording is safe from any thread,
// the frame thread with the engine's lock held included, and allocates nothing; counting replays
// the engine's own verdicts.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <vector>

#include "base/lock_order.hpp"
#include "base/observer_list.hpp"
#include "gestures/tap_activity_log.hpp"
#include "gestures/tap_verdict.hpp"

namespace velotap {

struct RetainedTouch {
  std::chrono::system_clock::time_point end{};
  double duration = 0;  ///< seconds
  double drift = 0;     ///< normalised units
};

struct ReplayedTouches {
  int accepted = 0;
  int total = 0;
  friend bool operator==(const ReplayedTouches&, const ReplayedTouches&) = default;
};

/// Judges the touches, oldest first, as the engine would have under these limits. A touch that
/// would have been accepted makes the ones that follow too soon, exactly as it does live.
[[nodiscard]] ReplayedTouches replayTouches(const std::vector<RetainedTouch>& touches,
                                            const TapLimits& limits);

class RetainedTouches {
 public:
  static constexpr std::size_t kCapacity = 50;

  /// Watches the log from now on.
  explicit RetainedTouches(TapActivityLog& log);

  void retain(const TapActivity& activity);
  /// Oldest first.
  [[nodiscard]] std::vector<RetainedTouch> touches() const;
  void clear();

 private:
  mutable OrderedMutex<LockRank::leaf> lock_;
  std::array<RetainedTouch, kCapacity> ring_{};
  std::size_t count_ = 0;  // ever retained since the last clear
  Observation records_;
};

}  // namespace velotap
