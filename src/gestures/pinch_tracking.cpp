#include "gestures/pinch_tracking.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velotap {
namespace {

constexpr float kMinContactSize = 0.25F;
constexpr float kMinContactDensity = 0.375F;

// A thumb that holds the mouse rests on its side edges; fingers in flight are a swipe.
constexpr float kLeftEdge = 0.05F;
constexpr float kRightEdge = 0.95F;
constexpr float kMaxStartSpeed = 4.0F;

constexpr double kMinPinchTravel = 3.0;    // millimetres
constexpr double kMinRotation = 12.0;      // degrees
constexpr double kMaxRotationDrift = 3.0;  // millimetres
constexpr double kDriftWeight = 1.5;       // a moving hand is not a pinch
constexpr double kSmallestDistance = 0.5;  // millimetres
constexpr double kSmoothing = 0.5;
constexpr double kMaxStep = 0.1;
constexpr double kZoomKeystroke = 0.12;

// In single precision, so that a contact reported at exactly a limit is judged as one.
bool startsWell(const Finger& finger) noexcept {
  return finger.pos.x > kLeftEdge && finger.pos.x < kRightEdge &&
         std::fabs(finger.velocity.x) + std::fabs(finger.velocity.y) < kMaxStartSpeed;
}

}  // namespace

bool isPinchContact(const Finger& finger) noexcept {
  return finger.zTotal > kMinContactSize && finger.zDensity > kMinContactDensity;
}

PinchPair measurePair(const Finger& a, const Finger& b) noexcept {
  const Finger& f0 = b.id < a.id ? b : a;
  const Finger& f1 = b.id < a.id ? a : b;
  const Point p0 = {static_cast<double>(f0.mmPos.x), static_cast<double>(f0.mmPos.y)};
  const Point p1 = {static_cast<double>(f1.mmPos.x), static_cast<double>(f1.mmPos.y)};
  return {.id1 = f0.id,
          .id2 = f1.id,
          .distance = distanceBetween(p0, p1),
          .midpoint = {(p0.x + p1.x) / 2, (p0.y + p1.y) / 2},
          .line = {p1.x - p0.x, p1.y - p0.y},
          .acceptable = startsWell(f0) && startsWell(f1)};
}

double PinchPair::angle() const noexcept {
  return std::atan2(line.y, line.x) * 180 / std::numbers::pi;
}

// The root of the sum of squares would be quicker and wrong in the last digit of one distance in
// thirty, and whoever replays a recording compares every digit of the steps made of them.
double distanceBetween(Point a, Point b) noexcept {
  return std::hypot(b.x - a.x, b.y - a.y);
}

double angleChange(double from, double to) noexcept {
  double change = std::fmod(to - from, 360.0);
  if (change > 180) change -= 360;
  if (change < -180) change += 360;
  return change;
}

std::optional<double> PinchMagnificationTracker::update(double distance,
                                                        double sensitivity) noexcept {
  if (lastDistance <= kSmallestDistance || distance <= kSmallestDistance) {
    *this = {.lastDistance = distance, .smoothed = 0};
    return std::nullopt;
  }
  const double raw = (distance - lastDistance) / lastDistance;
  smoothed = kSmoothing * smoothed + (1 - kSmoothing) * raw;
  lastDistance = distance;
  return std::clamp(smoothed * sensitivity, -kMaxStep, kMaxStep);
}

PinchOnset judgeOnset(const PinchMovement& movement, bool pinchEnabled,
                      bool rotateEnabled) noexcept {
  if (movement.distanceChange > kMinPinchTravel) {
    const bool pinch =
        pinchEnabled && movement.centroidTravel * kDriftWeight < movement.distanceChange;
    return pinch ? PinchOnset::pinch : PinchOnset::reject;
  }
  if (rotateEnabled && std::abs(movement.totalRotation) > kMinRotation &&
      movement.centroidTravel < kMaxRotationDrift) {
    return PinchOnset::rotate;
  }
  return PinchOnset::none;
}

int takeZoomKeystrokes(double& accumulator) noexcept {
  int keystrokes = 0;
  while (accumulator > kZoomKeystroke) {
    accumulator -= kZoomKeystroke;
    ++keystrokes;
  }
  while (accumulator < -kZoomKeystroke) {
    accumulator += kZoomKeystroke;
    --keystrokes;
  }
  return keystrokes;
}

}  // namespace velotap
