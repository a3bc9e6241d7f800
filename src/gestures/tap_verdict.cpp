#include "gestures/tap_verdict.hpp"

#include <algorithm>

namespace velotap {
namespace {

// Two taps closer than this part of the longest tap are one tap that bounced.
constexpr double kTooSoonFraction = 0.3;

constexpr double kNearMissDurationFactor = 2;
constexpr double kNearMissDriftFactor = 4;
// A drift limit near zero would otherwise hide every miss from whoever set it.
constexpr double kNearMissSmallestDrift = 0.02;

}  // namespace

TapVerdict judgeTap(const TapMeasurement& tap, const TapLimits& limits) noexcept {
  if (tap.duration > limits.duration) return TapVerdict::tooLong;
  if (tap.drift > limits.drift) return TapVerdict::moved;
  if (tap.pinching) return TapVerdict::pinching;
  if (tap.sinceNatural <= limits.duration) return TapVerdict::besidePhysicalClick;
  if (tap.sinceEmulated <= limits.duration * kTooSoonFraction) return TapVerdict::tooSoon;
  return TapVerdict::click;
}

bool isNearMiss(const TapMeasurement& tap, const TapLimits& limits) noexcept {
  return tap.duration <= kNearMissDurationFactor * limits.duration &&
         tap.drift <= std::max(kNearMissDriftFactor * limits.drift, kNearMissSmallestDrift);
}

}  // namespace velotap
