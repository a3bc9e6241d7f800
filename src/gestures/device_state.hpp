// What the engine remembers of one started device.
//
// A plain value; the engine changes it under its lock, one frame at a time.
#pragma once

#include <cstdint>
#include <optional>

#include "base/app_id.hpp"
#include "gestures/tap_motion_tracker.hpp"
#include "gestures/tap_verdict.hpp"
#include "gestures/three_finger_swipe_tracker.hpp"
#include "gestures/touch_trace.hpp"
#include "input/device_class.hpp"

namespace velotap {

/// A set of finger counts, one bit each.
class FingerCountSet {
 public:
  constexpr void insert(int count) noexcept { bits_ |= bit(count); }
  constexpr void clear() noexcept { bits_ = 0; }
  [[nodiscard]] constexpr bool contains(int count) const noexcept {
    return (bits_ & bit(count)) != 0;
  }

 private:
  static constexpr std::uint32_t bit(int count) noexcept { return std::uint32_t{1} << count; }
  std::uint32_t bits_ = 0;
};

struct DeviceState {
  DeviceClass deviceClass = DeviceClass::trackpad;
  int count = 0;                       ///< fingers in the most recent frame
  bool readyForContact = false;        ///< a session may start; true only after an empty frame
  MTPoint singleFingerPos;             ///< where the only finger was when there last was just one
  std::optional<double> sessionStart;  ///< seconds of uptime; absent when no session runs
  AppId targetBundleID;                ///< the application in front when the session started
  FingerCountSet enabledTapFingerCounts;
  bool swipeEnabledAtStart = false;
  TapLimits tapLimitsAtStart;  ///< a change of the settings does not affect a running session
  int maxFingers = 0;
  TapMotionTracker tapMotion;
  TouchTrace trace;
  ThreeFingerSwipeTracker swipe;
  bool sessionConsumedByClick = false;  ///< a physical click happened; no tap may follow from it
  bool processedEmptyFrame = false;     ///< the most recent frame had no fingers

  /// Clears what belonged to a session. Who ends one clears `sessionStart`; counts, limits and
  /// readiness outlive it.
  void resetFinishedSession() noexcept {
    targetBundleID = AppId();
    enabledTapFingerCounts.clear();
    swipeEnabledAtStart = false;
    tapMotion.reset();
    trace.clear();
    swipe.reset();
    sessionConsumedByClick = false;
  }

  /// Gives up a running session without an outcome.
  void abandonSession() noexcept {
    sessionStart.reset();
    resetFinishedSession();
  }
};

}  // namespace velotap
