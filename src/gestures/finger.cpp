#include "gestures/finger.hpp"

#include <algorithm>
#include <cstring>

namespace velotap {
namespace {

constexpr std::int32_t kFirstTouchingStage = 3;
constexpr std::int32_t kLastTouchingStage = 5;

bool touching(const MTTouch& touch) noexcept {
  return touch.stage >= kFirstTouchingStage && touch.stage <= kLastTouchingStage;
}

// Infinity minus itself and anything with a NaN in it is NaN, and NaN equals nothing: one
// comparison for eight numbers. Needs strict floating point, which is the compilers' default.
bool allFinite(const MTTouch& touch) noexcept {
  const auto residue = [](MTPoint p) { return (p.x - p.x) + (p.y - p.y); };
  return residue(touch.position) + residue(touch.millimetres) + residue(touch.velocity) +
             (touch.size - touch.size) + (touch.density - touch.density) ==
         0.0F;
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
