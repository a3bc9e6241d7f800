// How a server of the session that went away is found again: by a signal that it may be back, and
// by asking again after growing pauses.
//
// The pauses are for the gap between a server's socket and its readiness, which has no event of its
// own. They end after about half a minute where a signal is armed, so that a desktop that stays
// away costs nothing.
#pragma once

#include <functional>

namespace velotap {

/// Tells that a server that was away may be back. Main thread.
class RecoverySignal {
 public:
  virtual ~RecoverySignal() = default;
  /// False when nothing can be watched; whoever waits then asks again from time to time for good.
  [[nodiscard]] virtual bool arm(std::function<void()> mayBeBack) = 0;
  virtual void disarm() = 0;
};

/// Seconds before each new try. The last one is repeated where no recovery signal is armed.
inline constexpr double kRetryPauses[] = {0.1, 0.2, 0.4, 0.8, 1.6, 3.2, 6.4, 12.8};
inline constexpr double kUnwatchedPause = 60;
/// A connection that stood for this long has recovered: the next loss starts with short pauses.
inline constexpr double kSettledAfter = 10;

}  // namespace velotap
