#include "gestures/touch_trace.hpp"

namespace velotap {

void TouchTrace::add(const Fingers& fingers) noexcept {
  // Once cut, a later frame with fewer fingers might fit again; it would not follow the last one.
  if (cut_ || contacts_.size() + fingers.size() > kMaxContacts) {
    cut_ = true;
    return;
  }
  for (const Finger& finger : fingers) contacts_.push({finger, frames_});
  ++frames_;
}

}  // namespace velotap
