// Writes a virtual touchpad's frames as kernel input events.
//
// Each frame becomes one run of events that ends with its SYN_REPORT: a contact's slot with its
// new tracking id, position or lifting, and the single-touch summary that desktops read beside it.
// The encoder remembers the last frame, because contacts land and lift by difference. One owner;
// no allocation.
#pragma once

#include <linux/input.h>

#include <cstdint>
#include <span>

#include "adapters/linux/gesture/gesture_player.hpp"
#include "base/fixed_vector.hpp"

namespace velotap {

inline constexpr int kUnitsPerMillimetre = 200;
inline constexpr int kTouchpadSlots = 2;
inline constexpr int kLastTrackingId = 0xffff;

class PadEncoder {
 public:
  /// Valid until the next call. Empty when the frame changes nothing.
  [[nodiscard]] std::span<const input_event> encode(const PadFrame& frame) noexcept;

 private:
  void add(std::uint16_t type, std::uint16_t code, int value) noexcept;
  void addContact(std::size_t slot, const PadFrame& frame) noexcept;
  void addSummary(const PadFrame& frame) noexcept;

  PadFrame last_;
  int nextTrackingId_ = 0;
  FixedVector<input_event, 24> events_;
};

}  // namespace velotap
