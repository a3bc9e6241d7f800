#include "gestures/tap_motion_tracker.hpp"

#include <algorithm>
#include <cmath>

namespace velotap {
namespace {

// Single precision throughout, then widened: the limit is compared with what the surface reported,
// not with digits that it did not have.
double drift(MTPoint from, MTPoint to) noexcept {
  return static_cast<double>(std::fabs(to.x - from.x) + std::fabs(to.y - from.y));
}

bool isDown(std::int32_t id, const Fingers& fingers) noexcept {
  return std::any_of(fingers.begin(), fingers.end(), [id](const Finger& f) { return f.id == id; });
}

}  // namespace

void TapMotionTracker::update(const Fingers& fingers) noexcept {
  for (std::size_t i = 0; i < fingers.size(); ++i) {
    const Finger& finger = fingers[i];
    if (const Start* start = find(finger.id, i)) {
      maxDrift_ = std::max(maxDrift_, drift(start->pos, finger.pos));
    } else {
      remember(finger, fingers);
    }
  }
}

// Libraries list fingers in a steady order, so the start position mostly stands at the same index.
const TapMotionTracker::Start* TapMotionTracker::find(std::int32_t id,
                                                      std::size_t hint) const noexcept {
  if (hint < initialPositions_.size() && initialPositions_[hint].id == id) {
    return &initialPositions_[hint];
  }
  for (const Start& start : initialPositions_) {
    if (start.id == id) return &start;
  }
  return nullptr;
}

void TapMotionTracker::remember(const Finger& finger, const Fingers& fingers) noexcept {
  if (initialPositions_.full()) {
    std::size_t oldest = 0;
    while (isDown(initialPositions_[oldest].id, fingers)) ++oldest;
    initialPositions_.erase(oldest);
  }
  initialPositions_.push({finger.id, finger.pos});
}

}  // namespace velotap
