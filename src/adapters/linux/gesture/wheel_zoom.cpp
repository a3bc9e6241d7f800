#include "adapters/linux/gesture/wheel_zoom.hpp"

#include <algorithm>
#include <cmath>

#include "adapters/linux/gesture/gesture_player.hpp"

namespace velotap {
namespace {

// A change beyond these in one event is not a movement of fingers.
constexpr double kLargestFactor = 2;

void add(WheelEvents& out, std::uint16_t type, std::uint16_t code, int value) noexcept {
  input_event event{};
  event.type = type;
  event.code = code;
  event.value = value;
  out.push(event);
}

void addKey(WheelEvents& out, bool down) noexcept {
  add(out, EV_KEY, KEY_LEFTCTRL, down ? 1 : 0);
  add(out, EV_SYN, SYN_REPORT, 0);
}

}  // namespace

WheelEvents WheelZoom::handle(GestureKind kind, GesturePhase phase, double value,
                              double now) noexcept {
  if (kind != GestureKind::magnify) return {};
  WheelEvents out;
  switch (phase) {
    case GesturePhase::began:
      pendingUnits_ = 0;
      return release();
    case GesturePhase::changed:
      if (std::isfinite(value)) {
        lastHeard_ = now;
        move(value, out);
      }
      return out;
    case GesturePhase::ended:
    case GesturePhase::cancelled:
      return release();
  }
  return out;
}

void WheelZoom::move(double value, WheelEvents& out) noexcept {
  const double factor = std::clamp(1 + value, 1 / kLargestFactor, kLargestFactor);
  pendingUnits_ += std::log(factor) / std::log(kScaleOfNotch) * kUnitsOfNotch;
  // A hair more, so that steps whose logarithms add up to a unit but for rounding are one.
  const int units = static_cast<int>(pendingUnits_ + std::copysign(1e-6, pendingUnits_));
  if (units == 0) return;
  pendingUnits_ -= units;
  if (!controlDown_) {
    addKey(out, true);
    controlDown_ = true;
  }
  // A turn back begins a notch of its own, as the kernel's drivers count.
  if ((units > 0) != (notchUnits_ > 0)) notchUnits_ = 0;
  notchUnits_ += units;
  const int notches = notchUnits_ / kUnitsOfNotch;
  notchUnits_ %= kUnitsOfNotch;
  if (notches != 0) add(out, EV_REL, REL_WHEEL, notches);
  add(out, EV_REL, REL_WHEEL_HI_RES, units);
  add(out, EV_SYN, SYN_REPORT, 0);
}

std::optional<double> WheelZoom::deadline() const noexcept {
  if (!controlDown_) return std::nullopt;
  return lastHeard_ + kForgottenAfter;
}

WheelEvents WheelZoom::expire(double now) noexcept {
  const auto due = deadline();
  if (!due || now < *due) return {};
  return release();
}

WheelEvents WheelZoom::release() noexcept {
  WheelEvents out;
  if (controlDown_) addKey(out, false);
  controlDown_ = false;
  notchUnits_ = 0;
  return out;
}

}  // namespace velotap
