// The rectangle on screen in which the program's own gestures may be practised.
//
// Owned here rather than by the settings window, because the rules for who may receive a gesture
// ask for it. Any thread; its lock comes after the app tracker's.
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>

#include "base/lock_order.hpp"
#include "base/point.hpp"

namespace velotap {

/// Names one practice surface among those of this process; never reused.
using PracticeSurfaceId = std::uint64_t;

class PracticeTarget {
 public:
  /// The target of this process.
  [[nodiscard]] static PracticeTarget& shared();

  /// Global display coordinates; nothing while no practice surface is shown.
  void set(std::optional<Rect> rectangle);
  /// The same by a surface, which owns the target as long as no other surface publishes a
  /// rectangle. Taking away what another surface owns changes nothing.
  void update(PracticeSurfaceId surface, std::optional<Rect> rectangle);
  [[nodiscard]] bool contains(Point point) const;

 private:
  mutable OrderedMutex<LockRank::practiceTarget> lock_;
  std::optional<Rect> rectangle_;
  std::optional<PracticeSurfaceId> surface_;
};

}  // namespace velotap
