#include "output/recent_physical_mouse_events.hpp"

namespace velotap {
namespace {

// Fewer dead entries than this are not worth moving the living ones for.
constexpr std::size_t kSmallestCompaction = 128;

}  // namespace

void RecentPhysicalMouseEvents::record(std::int64_t number, double now) {
  prune(now);
  seenAt_[number] = now;
  timeline_.emplace_back(number, now);
}

bool RecentPhysicalMouseEvents::contains(std::int64_t number, double now) {
  prune(now);
  const auto found = seenAt_.find(number);
  return found != seenAt_.end() && now - found->second <= kRetention;
}

void RecentPhysicalMouseEvents::prune(double now) {
  while (firstLiveIndex_ < timeline_.size()) {
    const auto& [number, seenAt] = timeline_[firstLiveIndex_];
    if (!(now - seenAt > kRetention)) break;
    const auto found = seenAt_.find(number);
    // A newer sighting of the same number stays.
    if (found != seenAt_.end() && found->second == seenAt) seenAt_.erase(found);
    ++firstLiveIndex_;
  }
  if (firstLiveIndex_ >= kSmallestCompaction && timeline_.size() <= 2 * firstLiveIndex_) {
    timeline_.erase(timeline_.begin(),
                    timeline_.begin() + static_cast<std::ptrdiff_t>(firstLiveIndex_));
    firstLiveIndex_ = 0;
  }
}

void RecentPhysicalMouseEvents::reset() {
  seenAt_.clear();
  timeline_.clear();
  firstLiveIndex_ = 0;
}

}  // namespace velotap
