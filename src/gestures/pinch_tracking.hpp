// The geometry of a two-finger gesture: pinching, rotating, or neither.
//
// Plain values and pure functions without clock, lock or effect; the pinch engine sequences them.
// Distances in millimetres, angles in degrees, double precision throughout.
#pragma once

#include <cstdint>
#include <optional>

#include "base/point.hpp"
#include "gestures/finger.hpp"

namespace velotap {

/// The two contacts of one frame as a line from the one with the smaller identifier to the other.
struct PinchPair {
  std::int32_t id1 = 0;
  std::int32_t id2 = 0;
  double distance = 0;
  Point midpoint;
  Point line;               ///< from the first contact to the second
  bool acceptable = false;  ///< neither contact lies on a side edge or is in fast movement

  /// Of the line. Costs more than all the rest, so it is computed only where it is asked for.
  [[nodiscard]] double angle() const noexcept;
};

[[nodiscard]] PinchPair measurePair(const Finger& a, const Finger& b) noexcept;

/// Between two points, in their unit.
[[nodiscard]] double distanceBetween(Point a, Point b) noexcept;

/// A contact firm enough to count: no light touch, no resting edge of the hand.
[[nodiscard]] bool isPinchContact(const Finger& finger) noexcept;

/// The signed difference between two angles, the short way round.
[[nodiscard]] double angleChange(double from, double to) noexcept;

/// Turns distances into smoothed relative steps.
struct PinchMagnificationTracker {
  double lastDistance = 0;
  double smoothed = 0;

  /// The step of this frame, times `sensitivity`, within ±0.1; nothing, and a fresh start, when a
  /// distance is too small to divide by.
  [[nodiscard]] std::optional<double> update(double distance, double sensitivity) noexcept;
};

enum class PinchOnset { none, pinch, rotate, reject };

/// Whether the movement since the pair was first seen begins a gesture.
struct PinchMovement {
  double centroidTravel = 0;  ///< of the midpoint
  double distanceChange = 0;  ///< absolute
  double totalRotation = 0;   ///< signed degrees
};
[[nodiscard]] PinchOnset judgeOnset(const PinchMovement& movement, bool pinchEnabled,
                                    bool rotateEnabled) noexcept;

/// Takes whole keystrokes out of an accumulated zoom: positive for Zoom In, negative for Zoom Out.
[[nodiscard]] int takeZoomKeystrokes(double& accumulator) noexcept;

}  // namespace velotap
