// Makes the engine's decisions about touches that were kept once more, under other settings.
//
// Pure; any thread; allocates nothing. What judges here is what judges live: the tap's motion
// tracker and verdict, the pinch's onset, steps and keystrokes, the centre band.
#pragma once

#include <span>
#include <vector>

#include "config/config.hpp"
#include "gestures/tap_verdict.hpp"
#include "gestures/touch_trace.hpp"

namespace velotap {

/// One tap session that had an outcome.
struct KeptTap {
  double end = 0;           ///< seconds of uptime
  double duration = 0;      ///< seconds
  double sinceNatural = 0;  ///< seconds from the last physical click to the end
  std::vector<TouchContact> contacts;
};

/// One session of two fingers that pinched.
struct KeptPinch {
  std::vector<TouchContact> contacts;
};

/// One physical click with a single finger on a mouse.
struct KeptClick {
  MTPoint position;  ///< normalised
};

/// How many of the touches would be accepted.
struct ReplayedTouches {
  int accepted = 0;
  int total = 0;
  friend bool operator==(const ReplayedTouches&, const ReplayedTouches&) = default;
};

/// How far the fingers strayed, as the engine measures it.
[[nodiscard]] double replayedDrift(std::span<const TouchContact> contacts) noexcept;

/// Judges the taps, oldest first. One that is accepted makes those that follow too soon, exactly
/// as it does live.
[[nodiscard]] ReplayedTouches replayTaps(std::span<const KeptTap> taps,
                                         const TapLimits& limits) noexcept;

struct ReplayedPinch {
  bool began = false;  ///< it was a pinch, and neither a scroll nor a rotation
  int zoomedIn = 0;    ///< whole steps, each worth one keystroke
  int zoomedOut = 0;
};
[[nodiscard]] ReplayedPinch replayPinch(std::span<const TouchContact> contacts, double sensitivity,
                                        bool rotateEnabled) noexcept;

/// Accepted is what zooms by a whole step at least.
[[nodiscard]] ReplayedTouches replayPinches(std::span<const KeptPinch> pinches,
                                            double sensitivity) noexcept;

/// Accepted is what lies in the band.
[[nodiscard]] ReplayedTouches replayClicks(std::span<const KeptClick> clicks,
                                           const CenterBand& band) noexcept;

}  // namespace velotap
