// Judges a finished touch session: was it a tap, and if not, why not.
//
// The engine measures the session; this file only judges the measurements. Pure: no clock, no
// state, no allocation; safe from any thread. Limits are inclusive: a tap exactly at one counts.
#pragma once

namespace velotap {

/// The limits in force for one session, fixed when it began.
struct TapLimits {
  double duration = 0.3;  ///< seconds
  double drift = 0.05;    ///< normalised units
};

/// What was measured when the last finger lifted.
struct TapMeasurement {
  double duration = 0;       ///< seconds from the first finger down to the last finger up
  double drift = 0;          ///< farthest that any finger strayed, |dx| + |dy|, normalised
  bool pinching = false;     ///< a pinch or rotation is under way on some device
  double sinceNatural = 0;   ///< seconds since the last physical click; infinity for never
  double sinceEmulated = 0;  ///< seconds since the last click that a tap produced
};

/// The first reason that applies, in the order of the enumerators; `click` when none does.
enum class TapVerdict { tooLong, moved, pinching, besidePhysicalClick, tooSoon, click };

[[nodiscard]] TapVerdict judgeTap(const TapMeasurement& tap, const TapLimits& limits) noexcept;

/// Whether a refused tap came near enough to the limits to be worth showing to the person who
/// tunes them. A long press or a scroll is not.
[[nodiscard]] bool isNearMiss(const TapMeasurement& tap, const TapLimits& limits) noexcept;

}  // namespace velotap
