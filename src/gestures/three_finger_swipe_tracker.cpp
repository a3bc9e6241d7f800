#include "gestures/three_finger_swipe_tracker.hpp"

#include <algorithm>
#include <cmath>

namespace velotap {
namespace {

constexpr std::size_t kSwipeFingers = 3;
constexpr double kMaxSwipeDuration = 0.6;
constexpr double kMinSwipeTravel = 0.25;

void order(std::int32_t& a, std::int32_t& b) noexcept {
  if (b < a) std::swap(a, b);
}

}  // namespace

Point ThreeFingerSwipeTracker::centroid(const Fingers& fingers) noexcept {
  Point sum;
  for (const Finger& finger : fingers) {
    sum.x += static_cast<double>(finger.pos.x);
    sum.y += static_cast<double>(finger.pos.y);
  }
  const auto n = static_cast<double>(fingers.size());
  return {sum.x / n, sum.y / n};
}

ThreeFingerSwipeTracker::FingerIds ThreeFingerSwipeTracker::sortedIds(
    const Fingers& fingers) noexcept {
  FingerIds ids = {fingers[0].id, fingers[1].id, fingers[2].id};
  order(ids[0], ids[1]);
  order(ids[1], ids[2]);
  order(ids[0], ids[1]);
  return ids;
}

void ThreeFingerSwipeTracker::update(const Fingers& fingers) noexcept {
  const std::size_t n = fingers.size();
  if (finished_) {
    // Three fingers or more put down again after the swipe ended spoil it.
    if (n >= kSwipeFingers) isValid_ = false;
    return;
  }
  if (!fingerIDs_) {
    if (n == kSwipeFingers) {
      fingerIDs_ = sortedIds(fingers);
      startCentroid_ = centroid(fingers);
      isValid_ = true;
    } else if (n > kSwipeFingers) {
      finished_ = true;
    }
    return;
  }
  if (n < kSwipeFingers) {
    // Lifting ends a good swipe without spoiling it.
    finished_ = true;
    return;
  }
  if (n > kSwipeFingers || sortedIds(fingers) != *fingerIDs_) {
    isValid_ = false;
    finished_ = true;
    return;
  }
  const Point now = centroid(fingers);
  dx_ = now.x - startCentroid_.x;
  dy_ = now.y - startCentroid_.y;
}

SwipeVerdict judgeSwipe(const ThreeFingerSwipeTracker& swipe, int maxFingers,
                        double duration) noexcept {
  const double travel = std::abs(swipe.dx());
  const bool isSwipe = maxFingers == static_cast<int>(kSwipeFingers) &&
                       duration < kMaxSwipeDuration && swipe.isValid() &&
                       travel > kMinSwipeTravel && 2 * std::abs(swipe.dy()) < travel;
  if (!isSwipe) return SwipeVerdict::none;
  return swipe.dx() > 0 ? SwipeVerdict::back : SwipeVerdict::forward;
}

}  // namespace velotap
