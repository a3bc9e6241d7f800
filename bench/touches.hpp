// Frames of resting fingers for the benchmarks: plausible contacts, spread over the surface, that
// wander a little from frame to frame as real ones do.
#pragma once

#include <cstring>
#include <vector>

#include "platform/multitouch_abi.hpp"

namespace velotap::bench {

inline std::vector<MTTouch> restingFingers(int contacts) {
  std::vector<MTTouch> touches(static_cast<std::size_t>(contacts));
  for (int i = 0; i < contacts; ++i) {
    MTTouch& touch = touches[static_cast<std::size_t>(i)];
    std::memset(static_cast<void*>(&touch), 0, sizeof touch);
    const float place = (static_cast<float>(i) + 0.5F) / static_cast<float>(contacts);
    touch.identifier = 100 + i;
    touch.stage = 4;
    touch.position = {0.1F + 0.8F * place, 0.5F};
    touch.velocity = {0.01F, 0.0F};
    touch.millimetres = {10.0F + 80.0F * place, 50.0F};
    touch.size = 1.0F;
    touch.density = 1.0F;
  }
  return touches;
}

/// Moves every contact by a hundredth of the drift limit, to and fro.
inline void wander(std::vector<MTTouch>& touches, bool forth) {
  const float step = forth ? 0.0005F : -0.0005F;
  for (MTTouch& touch : touches) touch.position.x += step;
}

}  // namespace velotap::bench
