// One usable contact of the current frame, and the reduction of a raw frame to such contacts.
//
// Pure: reads at most sixteen records, allocates nothing, safe from any thread. What is malformed
// (an unknown stage, a number that is not finite, a second record of one contact) is dropped
// silently; that is all the protection recognition needs from a misbehaving library.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/fixed_vector.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

struct Finger {
  std::int32_t id;   ///< stable while the finger stays down
  MTPoint pos;       ///< normalised 0…1, y upwards
  MTPoint mmPos;     ///< millimetres
  MTPoint velocity;  ///< normalised units per second
  float zTotal;      ///< contact size
  float zDensity;    ///< contact density
};
static_assert(sizeof(Finger) == 9 * sizeof(float));

/// Records beyond this are not looked at: nobody has more fingers on one surface.
inline constexpr std::size_t kMaxFingers = 16;

using Fingers = FixedVector<Finger, kMaxFingers>;

/// The touching contacts in record order. A null pointer or a count below 1 is an empty frame.
[[nodiscard]] Fingers activeFingers(const MTTouch* touches, std::ptrdiff_t rawCount) noexcept;

}  // namespace velotap
