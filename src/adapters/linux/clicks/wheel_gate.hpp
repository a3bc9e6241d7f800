// Whether the wheel of a touch mouse turns.
//
// The kernel's driver makes scrolling of every finger that moves, whatever it moves for. While
// enough fingers are down for a gesture the wheel stands still, and for a moment after, because
// fingers do not all lift at once and the last one would scroll.
//
// Pure; times are seconds of the events' clock.
#pragma once

#include <limits>

namespace velotap {

class WheelGate {
 public:
  static constexpr double kLinger = 0.15;

  /// From how many fingers on the wheel stands still.
  void setLimit(int fingers) noexcept { limit_ = fingers; }
  /// What the fingers are now, and whether a wheel event of this moment passes.
  [[nodiscard]] bool passes(int fingers, double time) noexcept;

 private:
  static constexpr double kLongAgo = -std::numeric_limits<double>::infinity();
  int limit_ = 2;
  double closedUntil_ = kLongAgo;
};

}  // namespace velotap
