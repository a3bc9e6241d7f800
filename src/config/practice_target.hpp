// The rectangle on screen in which the program's own gestures may be practised.
//
// Owned here rather than by the settings window, because the rules for who may receive a gesture
// ask for it. Any thread; its lock comes after the app tracker's.
#pragma once

#include <mutex>
#include <optional>

#include "base/lock_order.hpp"
#include "base/point.hpp"

namespace velotap {

class PracticeTarget {
 public:
  /// The target of this process.
  [[nodiscard]] static PracticeTarget& shared();

  /// Global display coordinates; nothing while no practice surface is shown.
  void set(std::optional<Rect> rectangle);
  [[nodiscard]] bool contains(Point point) const;

 private:
  mutable OrderedMutex<LockRank::practiceTarget> lock_;
  std::optional<Rect> rectangle_;
};

}  // namespace velotap
