// What the benchmarks feed: the engine over the cheapest platform, and the floor beside it, with
// the same frames.
#pragma once

#include <vector>

#include "bench_platform.hpp"
#include "control/services.hpp"
#include "floor.hpp"
#include "touches.hpp"

namespace velotap::bench {

inline constexpr std::int32_t kTrackpadFamily = 128;
inline constexpr std::int32_t kMagicMouseFamily = 112;

/// A started engine with one idle device of this family.
class EngineWorkload {
 public:
  explicit EngineWorkload(std::int32_t family) : desk_(family), services_(desk_.platform) {
    services_.apps.start();
    services_.engine.start();
    lift();
  }
  void frame(const std::vector<MTTouch>& touches) {
    desk_.clock.now += 0.008;
    services_.engine.handleFrame(OneDeviceLibrary::device(), touches.data(),
                                 static_cast<std::ptrdiff_t>(touches.size()));
  }
  void lift() { services_.engine.handleFrame(OneDeviceLibrary::device(), nullptr, 0); }
  [[nodiscard]] const CountingEvents& posted() const { return desk_.events; }

 private:
  BenchPlatform desk_;
  Services services_;
};

/// Two fingers of a mouse that spread a little more with every frame, and close again.
class PinchFrames {
 public:
  [[nodiscard]] const std::vector<MTTouch>& next() {
    distance_ += opening_ ? 0.2F : -0.2F;
    if (distance_ > 40.0F || distance_ < 20.0F) opening_ = !opening_;
    touches_[0].millimetres.x = 50.0F - distance_ / 2;
    touches_[1].millimetres.x = 50.0F + distance_ / 2;
    return touches_;
  }

 private:
  std::vector<MTTouch> touches_ = restingFingers(2);
  float distance_ = 30.0F;
  bool opening_ = true;
};

}  // namespace velotap::bench
