// Fingers for tests of what comes after the reduction of a frame.
#pragma once

#include <initializer_list>

#include "gestures/finger.hpp"

namespace velotap::test {

/// A firm finger at a normalised position, on a surface of 100 × 100 mm.
inline Finger finger(std::int32_t id, float x, float y) {
  return {.id = id,
          .pos = {x, y},
          .mmPos = {x * 100, y * 100},
          .velocity = {},
          .zTotal = 1,
          .zDensity = 1};
}

inline Fingers fingers(std::initializer_list<Finger> list) {
  Fingers result;
  for (const Finger& f : list) result.push(f);
  return result;
}

}  // namespace velotap::test
