// Remembers which mouse events passed the lowest level of the event stream a short while ago.
//
// A press that is not among them was made by software. Main thread. Lookups cost no more than the
// sightings that expired since the last one: the list is pruned from the front and its dead part is
// dropped only in bulk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velotap {

class RecentPhysicalMouseEvents {
 public:
  /// How long a sighting counts, in seconds; one exactly this old still does.
  static constexpr double kRetention = 2.0;

  void record(std::int64_t number, double now);
  [[nodiscard]] bool contains(std::int64_t number, double now);
  void prune(double now);
  /// Forgets everything, keeping the storage.
  void reset();

  /// Entries kept in memory, dead ones included.
  [[nodiscard]] std::size_t timelineLength() const noexcept { return timeline_.size(); }

 private:
  std::unordered_map<std::int64_t, double> seenAt_;
  std::vector<std::pair<std::int64_t, double>> timeline_;
  std::size_t firstLiveIndex_ = 0;
};

}  // namespace velotap
