// Zooms by Control and the wheel, for desktops on which the virtual touchpad cannot be used.
//
// One wheel notch is taken for a size change of kScaleOfNotch, as browsers and most drawing
// programs do; fractions of it go out as high-resolution wheel movement. Control goes down before
// the first movement and comes up at the gesture's end, or when nothing was heard of the gesture
// for kForgottenAfter, because its end may never come. Key and wheel must leave through one and
// the same device: desktops do not keep the order of two. A wheel cannot rotate: those events are
// ignored here.
//
// A value: no clock, thread, I/O or allocation. The owner writes each run of events that ends with
// SYN_REPORT with one write.
#pragma once

#include <linux/input.h>

#include <optional>
#include <span>

#include "base/fixed_vector.hpp"
#include "platform/event_stream.hpp"

namespace velotap {

inline constexpr double kScaleOfNotch = 1.1;
inline constexpr int kUnitsOfNotch = 120;

/// Room for Control, one movement in both resolutions, and Control again.
using WheelEvents = FixedVector<input_event, 8>;

class WheelZoom {
 public:
  [[nodiscard]] WheelEvents handle(GestureKind kind, GesturePhase phase, double value,
                                   double now) noexcept;
  /// When `expire` wants to be called; nothing while Control is up.
  [[nodiscard]] std::optional<double> deadline() const noexcept;
  [[nodiscard]] WheelEvents expire(double now) noexcept;
  /// Lets Control go whatever the time.
  [[nodiscard]] WheelEvents release() noexcept;

 private:
  void move(double value, WheelEvents& out) noexcept;

  bool controlDown_ = false;
  double lastHeard_ = 0;
  double pendingUnits_ = 0;  ///< less than one, not yet turned into movement
  int notchUnits_ = 0;       ///< high-resolution units since the last whole notch
};

}  // namespace velotap
