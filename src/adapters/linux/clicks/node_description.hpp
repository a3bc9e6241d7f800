// Reads what an open event node says of its device.
#pragma once

#include "adapters/linux/evdev/evdev_device.hpp"

namespace velotap {

/// False when the descriptor is no event node's.
[[nodiscard]] bool readDescription(int descriptor, EvdevDevice& device);

}  // namespace velotap
