// Measures how far the fingers of one touch session strayed from where each was first seen.
//
// A plain value without clock or lock; the engine keeps one for each device. Positions are
// normalised, drift is |dx| + |dy|.
#pragma once

#include <cstdint>

#include "base/fixed_vector.hpp"
#include "gestures/finger.hpp"

namespace velotap {

class TapMotionTracker {
 public:
  void update(const Fingers& fingers) noexcept;
  void reset() noexcept {
    initialPositions_.clear();
    maxDrift_ = 0;
  }
  /// The farthest that any finger strayed in this session.
  [[nodiscard]] double maxDrift() const noexcept { return maxDrift_; }

 private:
  struct Start {
    std::int32_t id;
    MTPoint pos;
  };
  // Many times what a hand can do before its touch is too long for a tap. Were it ever full, the
  // oldest finger that is no longer down makes room, so memory stays bounded whatever a library
  // sends.
  static constexpr std::size_t kMaxStarts = 64;

  [[nodiscard]] const Start* find(std::int32_t id, std::size_t hint) const noexcept;
  void remember(const Finger& finger, const Fingers& fingers) noexcept;

  FixedVector<Start, kMaxStarts> initialPositions_;
  double maxDrift_ = 0;
};

}  // namespace velotap
