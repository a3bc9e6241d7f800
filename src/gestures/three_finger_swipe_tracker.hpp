// Follows a swipe made with exactly three fingers, and judges it when the session is over.
//
// The tracker measures, `judgeSwipe` decides; both are plain values and pure functions without
// clock or lock. Displacements are fractions of the surface.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "base/point.hpp"
#include "gestures/finger.hpp"

namespace velotap {

class ThreeFingerSwipeTracker {
 public:
  void update(const Fingers& fingers) noexcept;
  void reset() noexcept { *this = ThreeFingerSwipeTracker(); }

  /// The movement so far is a clean three-finger swipe.
  [[nodiscard]] bool isValid() const noexcept { return isValid_; }
  /// Displacement of the fingers' mean from where the three were first seen together.
  [[nodiscard]] double dx() const noexcept { return dx_; }
  [[nodiscard]] double dy() const noexcept { return dy_; }

  /// The mean position, in double precision. `fingers` is not empty.
  [[nodiscard]] static Point centroid(const Fingers& fingers) noexcept;

 private:
  using FingerIds = std::array<std::int32_t, 3>;
  [[nodiscard]] static FingerIds sortedIds(const Fingers& fingers) noexcept;

  std::optional<FingerIds> fingerIDs_;  // sorted; absent until three fingers are down
  Point startCentroid_;                 // meaningful while fingerIDs_ is present
  bool finished_ = false;               // can no longer grow
  bool isValid_ = false;
  double dx_ = 0;
  double dy_ = 0;
};

enum class SwipeVerdict { none, back, forward };

/// What a finished session amounts to, by its largest finger count and length in seconds. Limits
/// are exclusive. Fingers that moved to the right mean Back.
[[nodiscard]] SwipeVerdict judgeSwipe(const ThreeFingerSwipeTracker& swipe, int maxFingers,
                                      double duration) noexcept;

}  // namespace velotap
