// What a desktop makes of a touchpad's frames: the arithmetic of two-finger gestures, written down
// apart from the player so that tests can hold the one against the other.
//
// Two contacts that both moved by more than 1.5 mm in opposite directions since they landed are a
// pinch. Scale is the distance relative to the frame that was recognised, angle the turn of the
// line between the contacts from frame to frame, clockwise positive. Lifting both in one frame ends
// the gesture; lifting one gives it up after 100 ms.
#pragma once

#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "adapters/linux/gesture/gesture_player.hpp"

namespace velotap {

class DesktopView {
 public:
  struct Gesture {
    double scale = 1;
    double angle = 0;  ///< degrees, clockwise, summed
    bool over = false;
    bool cancelled = false;
  };

  void see(const PadFrame& frame, double now) {
    const bool both = frame.contacts[0] && frame.contacts[1];
    if (!both) {
      leave(frame.contacts[0] || frame.contacts[1], now);
      return;
    }
    const Point a = *frame.contacts[0];
    const Point b = *frame.contacts[1];
    if (!landed_) {
      landed_ = frame;
      return;
    }
    const double distance = std::hypot(b.x - a.x, b.y - a.y);
    const double angle = std::atan2(b.y - a.y, b.x - a.x) * 180 / std::numbers::pi;
    if (!recognised_) {
      if (!movedApart(a, b)) return;
      recognised_ = true;
      baseDistance_ = distance;
      lastAngle_ = angle;
      gestures.emplace_back();
      return;
    }
    Gesture& gesture = gestures.back();
    gesture.scale = distance / baseDistance_;
    gesture.angle += std::remainder(angle - lastAngle_, 360.0);
    lastAngle_ = angle;
  }

  std::vector<Gesture> gestures;

 private:
  [[nodiscard]] bool movedApart(Point a, Point b) const {
    const Point u{a.x - landed_->contacts[0]->x, a.y - landed_->contacts[0]->y};
    const Point v{b.x - landed_->contacts[1]->x, b.y - landed_->contacts[1]->y};
    return std::hypot(u.x, u.y) > 1.5 && std::hypot(v.x, v.y) > 1.5 && u.x * v.x + u.y * v.y < 0;
  }

  void leave(bool oneRemains, double now) {
    if (oneRemains) {
      if (!oneSince_) oneSince_ = now;
      landed_.reset();
      return;
    }
    if (recognised_) {
      gestures.back().over = true;
      gestures.back().cancelled = oneSince_ && now - *oneSince_ > 0.1;
    }
    recognised_ = false;
    landed_.reset();
    oneSince_.reset();
  }

  std::optional<PadFrame> landed_;
  bool recognised_ = false;
  double baseDistance_ = 0;
  double lastAngle_ = 0;
  std::optional<double> oneSince_;
};

}  // namespace velotap
