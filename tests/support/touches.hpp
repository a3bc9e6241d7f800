// Contact records for tests, built from what a test cares about.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <vector>

#include "platform/multitouch_abi.hpp"

namespace velotap::test {

/// One contact; the defaults are a resting fingertip in the middle of a surface of 100 × 100 mm.
struct TouchSpec {
  std::int32_t id = 1;
  float x = 0.5F;
  float y = 0.5F;
  std::int32_t stage = 4;
  float vx = 0;
  float vy = 0;
  float size = 1;
  float density = 1;
  float millimetresPerUnit = 100;
};

inline MTTouch touch(const TouchSpec& spec) {
  // The library's own bytes hold whatever they hold; nothing may depend on them.
  std::array<std::byte, sizeof(MTTouch)> bytes;
  bytes.fill(std::byte{0xA5});
  auto record = std::bit_cast<MTTouch>(bytes);
  record.identifier = spec.id;
  record.stage = spec.stage;
  record.position = {spec.x, spec.y};
  record.velocity = {spec.vx, spec.vy};
  record.size = spec.size;
  record.density = spec.density;
  record.millimetres = {spec.x * spec.millimetresPerUnit, spec.y * spec.millimetresPerUnit};
  return record;
}

using Frame = std::vector<MTTouch>;

/// Contacts 1 … n side by side; all of them displaced by (dx, dy).
inline Frame row(int n, float dx = 0, float dy = 0) {
  Frame frame;
  for (int i = 0; i < n; ++i) {
    frame.push_back(
        touch({.id = i + 1, .x = 0.3F + 0.1F * static_cast<float>(i) + dx, .y = 0.5F + dy}));
  }
  return frame;
}

}  // namespace velotap::test
