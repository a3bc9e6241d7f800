// Taps as the log keeps them, for the tests of whatever shows or judges them.
#pragma once

#include <chrono>

#include "gestures/tap_activity_log.hpp"

namespace velotap::test {

inline std::chrono::system_clock::time_point atSecond(int second) {
  return std::chrono::system_clock::time_point(std::chrono::seconds(second));
}

/// A good trackpad tap under the factory limits, ended at second 1000 plus its number.
inline TapActivity tapNumber(int id) {
  return {.id = id,
          .date = atSecond(1000 + id),
          .deviceClass = DeviceClass::trackpad,
          .fingers = 3,
          .duration = 0.12,
          .drift = 0.0125,
          .maxDuration = 0.3,
          .maxDrift = 0.05,
          .outcome = TapActivity::Outcome::click};
}

inline TapActivity tooLong(int id, double duration) {
  TapActivity tap = tapNumber(id);
  tap.duration = duration;
  tap.outcome = TapActivity::Outcome::tooLong;
  return tap;
}

inline TapActivity moved(int id, double drift) {
  TapActivity tap = tapNumber(id);
  tap.drift = drift;
  tap.outcome = TapActivity::Outcome::moved;
  return tap;
}

inline TapActivity tooSoon(int id) {
  TapActivity tap = tapNumber(id);
  tap.outcome = TapActivity::Outcome::tooSoon;
  return tap;
}

}  // namespace velotap::test
