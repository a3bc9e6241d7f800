// The main thread's event loop as adapters see it: call me when this descriptor is ready.
//
// Main thread only: descriptors are watched, reported and withdrawn there. Watching is
// level-triggered, so a callback that leaves something unread is called again. Timers are
// MainQueue::asyncAfter; this header has none of its own.
#pragma once

#include <functional>

#include "base/observer_list.hpp"

namespace velotap {

class DescriptorLoop {
 public:
  /// What wakes the callback. Errors and hang-ups always do: the callback finds them out by
  /// reading, as it would have to anyway.
  enum class Interest { readable, readableOrWritable };

  virtual ~DescriptorLoop() = default;
  /// One watch at a time for each descriptor, which stays open until the watch is withdrawn.
  /// Withdrawing is allowed at any time, inside the callback too; the callback is not called
  /// afterwards. An inactive observation when the system refuses.
  [[nodiscard]] virtual Observation watch(int descriptor, Interest interest,
                                          std::function<void()> ready) = 0;
};

}  // namespace velotap
