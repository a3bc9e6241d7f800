#include "adapters/linux/clicks/wheel_gate.hpp"

namespace velotap {

bool WheelGate::passes(int fingers, double time) noexcept {
  if (fingers >= limit_) {
    closedUntil_ = time + kLinger;
    return false;
  }
  // A new touch has nothing to do with the gesture before it.
  if (fingers == 0) closedUntil_ = kLongAgo;
  return time >= closedUntil_;
}

}  // namespace velotap
