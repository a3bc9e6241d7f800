#include "gestures/finger.hpp"

#include <algorithm>
#include <bit>

namespace velotap {
namespace {

constexpr std::int32_t kFirstTouchingStage = 3;
constexpr std::int32_t kLastTouchingStage = 5;

bool touching(const MTTouch& touch) noexcept {
  return touch.stage >= kFirstTouchingStage && touch.stage <= kLastTouchingStage;
}

// A single-precision number is finite unless all exponent bits are set, and then adding the lowest
// exponent bit to them carries into the sign's place. Two numbers are tested at a time.
constexpr std::uint64_t kExponents = 0x7F80'0000'7F80'0000;
constexpr std::uint64_t kLowestExponentBits = 0x0080'0000'0080'0000;
constexpr std::uint64_t kSigns = 0x8000'0000'8000'0000;

std::uint64_t exponentCarry(MTPoint pair) noexcept {
  return (std::bit_cast<std::uint64_t>(pair) & kExponents) + kLowestExponentBits;
}

bool allFinite(const MTTouch& touch) noexcept {
  const std::uint64_t carries = exponentCarry(touch.position) | exponentCarry(touch.millimetres) |
                                exponentCarry(touch.velocity) |
                                exponentCarry({touch.size, touch.density});
  return (carries & kSigns) == 0;
}

// Contact identifiers are small and rarely collide modulo 64, so one bit each almost always settles
// that an identifier is new; the list is searched only when it does not.
class SeenIdentifiers {
 public:
  bool isNew(std::int32_t id, const Fingers& kept) noexcept {
    const std::uint64_t bit = std::uint64_t{1} << (static_cast<std::uint32_t>(id) % 64U);
    if ((bits_ & bit) != 0 &&
        std::any_of(kept.begin(), kept.end(), [id](const Finger& f) { return f.id == id; })) {
      return false;
    }
    bits_ |= bit;
    return true;
  }

 private:
  std::uint64_t bits_ = 0;
};

}  // namespace

Fingers activeFingers(const MTTouch* touches, std::ptrdiff_t rawCount) noexcept {
  Fingers fingers;
  if (touches == nullptr) return fingers;
  const std::ptrdiff_t count = std::min(rawCount, static_cast<std::ptrdiff_t>(kMaxFingers));
  SeenIdentifiers seen;
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    const MTTouch& touch = touches[i];
    if (!touching(touch) || !allFinite(touch) || !seen.isNew(touch.identifier, fingers)) continue;
    fingers.push({.id = touch.identifier,
                  .pos = touch.position,
                  .mmPos = touch.millimetres,
                  .velocity = touch.velocity,
                  .zTotal = touch.size,
                  .zDensity = touch.density});
  }
  return fingers;
}

}  // namespace velotap
