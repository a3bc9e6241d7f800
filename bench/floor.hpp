// The least that any recogniser must do with a frame: look at every record, keep each contact once,
// update the largest drift, under one uncontended lock. What the engine costs is judged against it.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <mutex>

#include "platform/multitouch_abi.hpp"

namespace velotap::bench {

class Floor {
 public:
  void frame(const MTTouch* touches, int count) {
    const std::lock_guard guard(lock_);
    std::uint64_t seen = 0;
    int kept = 0;
    for (int i = 0; i < count && i < 16; ++i) {
      const MTTouch& t = touches[i];
      if (t.stage < 3 || t.stage > 5) continue;
      if (!finite(t.position) || !finite(t.velocity) || !finite(t.millimetres) ||
          !std::isfinite(t.size) || !std::isfinite(t.density)) {
        continue;
      }
      const std::uint64_t bit = std::uint64_t{1}
                                << (static_cast<std::uint32_t>(t.identifier) & 63U);
      if ((seen & bit) != 0) continue;
      seen |= bit;
      drift(static_cast<std::size_t>(kept++), t);
    }
    fingers_ = kept;
  }
  [[nodiscard]] double maxDrift() const { return maxDrift_; }
  [[nodiscard]] int fingers() const { return fingers_; }

 private:
  static bool finite(MTPoint p) { return std::isfinite(p.x) && std::isfinite(p.y); }
  void drift(std::size_t slot, const MTTouch& t) {
    if (ids_[slot] != t.identifier) {
      ids_[slot] = t.identifier;
      starts_[slot] = t.position;
      return;
    }
    const auto d = static_cast<double>(std::fabs(t.position.x - starts_[slot].x) +
                                       std::fabs(t.position.y - starts_[slot].y));
    if (d > maxDrift_) maxDrift_ = d;
  }

  std::mutex lock_;
  std::array<std::int32_t, 16> ids_{};
  std::array<MTPoint, 16> starts_{};
  double maxDrift_ = 0;
  int fingers_ = 0;
};

}  // namespace velotap::bench
