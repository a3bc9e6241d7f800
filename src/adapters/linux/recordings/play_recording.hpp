// Runs a recording through the decoder of the multitouch provider.
//
// Pure; times are seconds from the recording's first event.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "adapters/linux/evdev/surface_model.hpp"
#include "adapters/linux/recordings/evdev_recording.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

struct PlayedFrame {
  double time = 0;
  std::vector<MTTouch> touches;
};

/// A contact that was not counted as a finger, and why.
struct PlayedRefusal {
  double time = 0;
  std::int32_t contact = 0;
  const char* reason = "";
};

struct PlayedRecording {
  std::string name;
  SurfaceModel model;
  std::vector<PlayedFrame> frames;  ///< the first is empty: a device says what it has when started
  std::vector<PlayedRefusal> refusals;
};

[[nodiscard]] PlayedRecording playRecording(const EvdevRecording& recording);

}  // namespace velotap
