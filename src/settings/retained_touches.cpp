#include "settings/retained_touches.hpp"

#include <algorithm>
#include <limits>
#include <mutex>

namespace velotap {

ReplayedTouches replayTouches(const std::vector<RetainedTouch>& touches, const TapLimits& limits) {
  ReplayedTouches result{.accepted = 0, .total = static_cast<int>(touches.size())};
  const RetainedTouch* lastAccepted = nullptr;
  for (const RetainedTouch& touch : touches) {
    TapMeasurement tap{.duration = touch.duration,
                       .drift = touch.drift,
                       .pinching = false,
                       .sinceNatural = std::numeric_limits<double>::infinity(),
                       .sinceEmulated = std::numeric_limits<double>::infinity()};
    if (lastAccepted != nullptr) {
      tap.sinceEmulated = std::chrono::duration<double>(touch.end - lastAccepted->end).count();
    }
    if (judgeTap(tap, limits) != TapVerdict::click) continue;
    ++result.accepted;
    lastAccepted = &touch;
  }
  return result;
}

RetainedTouches::RetainedTouches(TapActivityLog& log)
    : records_(log.observeRecords([this](const TapActivity& activity) { retain(activity); })) {}

void RetainedTouches::retain(const TapActivity& activity) {
  const std::lock_guard guard(lock_);
  ring_.at(count_ % kCapacity) = {
      .end = activity.date, .duration = activity.duration, .drift = activity.drift};
  ++count_;
}

std::vector<RetainedTouch> RetainedTouches::touches() const {
  std::vector<RetainedTouch> result;
  result.reserve(kCapacity);
  const std::lock_guard guard(lock_);
  const std::size_t kept = std::min(count_, kCapacity);
  for (std::size_t i = count_ - kept; i < count_; ++i) result.push_back(ring_.at(i % kCapacity));
  return result;
}

void RetainedTouches::clear() {
  const std::lock_guard guard(lock_);
  count_ = 0;
}

}  // namespace velotap
