// When a button event may be written, so that no desktop takes a click for a bouncing switch.
//
// Desktops hold back or merge button changes of one device that follow each other within some
// 25 ms, and switch to stricter rules for good once they have seen shorter ones. So a button stays
// down at least 30 ms and up at least 30 ms. Events keep their order. Pure: times are parameters,
// seconds of uptime; no allocation; not thread-safe.
#pragma once

#include <cstddef>
#include <optional>

#include "base/fixed_vector.hpp"

namespace velotap {

class ClickPacer {
 public:
  static constexpr double kSmallestHold = 0.030;
  static constexpr double kSmallestGap = 0.030;

  enum class Change { press, release };

  /// Takes a change that was asked for. What is refused for want of room is refused in pairs: a
  /// press is accepted only with room for its release, and the release of a refused press goes the
  /// same way. False when refused.
  bool submit(Change change) noexcept;

  /// Takes out the change that is to be written now, if there is one; `wrote` follows.
  [[nodiscard]] std::optional<Change> takeDue(double now) noexcept;

  /// The change has been written by now. The spacing counts from here and not from when writing
  /// began, because the thread may have lost the processor in between.
  void wrote(Change change, double now) noexcept;

  /// When `takeDue` will next have something; nothing while no change waits.
  [[nodiscard]] std::optional<double> nextDue() const noexcept;

  /// The button is down as far as the desktop knows.
  [[nodiscard]] bool isDown() const noexcept { return down_; }

  /// Forgets what waits. Whoever calls this must release the button if it is down.
  void clear() noexcept;

 private:
  static constexpr std::size_t kMostWaiting = 32;
  [[nodiscard]] double dueTime(Change change) const noexcept;

  FixedVector<Change, kMostWaiting> waiting_;
  int refusedPresses_ = 0;
  bool down_ = false;
  double lastChange_ = -1;  // before any uptime, so that the first press waits for nothing
};

}  // namespace velotap
