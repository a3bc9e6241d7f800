// Makes one frame of many that only moved something.
//
// After a pause everything that piled up would otherwise leave at once, more than a desktop's queue
// holds. Way and wheel add up, of positions the last one counts; the result is where the pointer
// and the fingers are now. Frames in which something comes down, goes up or is pressed are never
// merged. Pure; not thread-safe.
#pragma once

#include <linux/input.h>

#include <span>
#include <vector>

namespace velotap {

class FrameMerger {
 public:
  /// Whether a frame may be merged with its neighbours. `frame` has no SYN_REPORT.
  [[nodiscard]] static bool mergeable(std::span<const input_event> frame) noexcept;

  /// `slot` is the one that the frame's first contact value is about.
  void add(std::span<const input_event> frame, int slot);
  [[nodiscard]] bool empty() const noexcept { return values_.empty(); }
  /// The merged frame without SYN_REPORT, which leaves `slot` as the current one; empty again.
  [[nodiscard]] std::vector<input_event> take(int slot);

 private:
  struct Value {
    int slot;  // kNoSlot for what belongs to no contact
    input_event event;
  };
  static constexpr int kNoSlot = -1;
  std::vector<Value> values_;
};

}  // namespace velotap
