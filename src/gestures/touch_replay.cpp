#include "gestures/touch_replay.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "gestures/pinch_tracking.hpp"
#include "gestures/tap_motion_tracker.hpp"

namespace velotap {
namespace {

// Calls `use` with the fingers of each frame, in order.
template <typename Use>
void forEachFrame(std::span<const TouchContact> contacts, Use use) {
  Fingers fingers;
  for (std::size_t i = 0; i < contacts.size(); ++i) {
    fingers.push(contacts[i].finger);
    if (i + 1 < contacts.size() && contacts[i + 1].frame == contacts[i].frame) continue;
    use(fingers);
    fingers.clear();
  }
}

// The course of one device's pinch: from two fingers that were seen to the end of what they did.
class PinchCourse {
 public:
  PinchCourse(double sensitivity, bool rotateEnabled)
      : sensitivity_(sensitivity), rotateEnabled_(rotateEnabled) {}

  void frame(const Fingers& fingers) {
    if (over_) return;
    FixedVector<Finger, kMaxFingers> firm;
    for (const Finger& finger : fingers) {
      if (isPinchContact(finger)) firm.push(finger);
    }
    if (fingers.size() != 2 || firm.size() != 2) {
      over_ = first_.has_value() || fingers.size() > 2;
      return;
    }
    const PinchPair pair = measurePair(firm[0], firm[1]);
    if (!first_) {
      begin(pair);
    } else if (pair.id1 != first_->id1 || pair.id2 != first_->id2) {
      over_ = true;
    } else {
      advance(pair);
    }
  }

  [[nodiscard]] const ReplayedPinch& result() const { return result_; }

 private:
  void begin(const PinchPair& pair) {
    first_ = pair;
    lastAngle_ = pair.angle();
    over_ = !pair.acceptable;
  }

  void advance(const PinchPair& pair) {
    if (result_.began) {
      zoom(pair.distance);
      return;
    }
    const double angle = pair.angle();
    rotation_ += angleChange(lastAngle_, angle);
    lastAngle_ = angle;
    const PinchMovement movement = {
        .centroidTravel = distanceBetween(pair.midpoint, first_->midpoint),
        .distanceChange = std::abs(pair.distance - first_->distance),
        .totalRotation = rotation_};
    switch (judgeOnset(movement, true, rotateEnabled_)) {
      case PinchOnset::none:
        break;
      case PinchOnset::pinch:
        result_.began = true;
        steps_ = {.lastDistance = pair.distance, .smoothed = 0};
        break;
      case PinchOnset::rotate:
      case PinchOnset::reject:
        over_ = true;
        break;
    }
  }

  void zoom(double distance) {
    const auto step = steps_.update(distance, sensitivity_);
    if (!step) return;
    zoom_ += *step;
    const int keystrokes = takeZoomKeystrokes(zoom_);
    result_.zoomedIn += std::max(keystrokes, 0);
    result_.zoomedOut += std::max(-keystrokes, 0);
  }

  double sensitivity_;
  bool rotateEnabled_;
  bool over_ = false;
  std::optional<PinchPair> first_;
  double lastAngle_ = 0;
  double rotation_ = 0;
  PinchMagnificationTracker steps_;
  double zoom_ = 0;
  ReplayedPinch result_;
};

}  // namespace

double replayedDrift(std::span<const TouchContact> contacts) noexcept {
  TapMotionTracker motion;
  forEachFrame(contacts, [&motion](const Fingers& fingers) { motion.update(fingers); });
  return motion.maxDrift();
}

ReplayedTouches replayTaps(std::span<const KeptTap> taps, const TapLimits& limits) noexcept {
  ReplayedTouches result{.accepted = 0, .total = static_cast<int>(taps.size())};
  double lastAccepted = -std::numeric_limits<double>::infinity();
  for (const KeptTap& tap : taps) {
    // A tap beside a pinch had no outcome, so none was kept.
    const TapMeasurement measured = {.duration = tap.duration,
                                     .drift = replayedDrift(tap.contacts),
                                     .pinching = false,
                                     .sinceNatural = tap.sinceNatural,
                                     .sinceEmulated = tap.end - lastAccepted};
    if (judgeTap(measured, limits) != TapVerdict::click) continue;
    ++result.accepted;
    lastAccepted = tap.end;
  }
  return result;
}

ReplayedPinch replayPinch(std::span<const TouchContact> contacts, double sensitivity,
                          bool rotateEnabled) noexcept {
  PinchCourse course(sensitivity, rotateEnabled);
  forEachFrame(contacts, [&course](const Fingers& fingers) { course.frame(fingers); });
  return course.result();
}

ReplayedTouches replayPinches(std::span<const KeptPinch> pinches, double sensitivity) noexcept {
  ReplayedTouches result{.accepted = 0, .total = static_cast<int>(pinches.size())};
  for (const KeptPinch& pinch : pinches) {
    // Whoever was kept pinched before it could rotate, whatever is on now.
    const ReplayedPinch replayed = replayPinch(pinch.contacts, sensitivity, false);
    if (replayed.zoomedIn + replayed.zoomedOut > 0) ++result.accepted;
  }
  return result;
}

ReplayedTouches replayClicks(std::span<const KeptClick> clicks, const CenterBand& band) noexcept {
  const auto inside = std::count_if(clicks.begin(), clicks.end(), [&band](const KeptClick& click) {
    return band.contains(click.position.x);
  });
  return {.accepted = static_cast<int>(inside), .total = static_cast<int>(clicks.size())};
}

}  // namespace velotap
