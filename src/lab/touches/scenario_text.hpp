// Writes touch frames as a scenario, so that what fingers did can be replayed anywhere.
//
// Pure; any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "adapters/linux/evdev/surface_model.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap::lab {

/// The first lines: format, device, application in front. `comment` may be empty.
[[nodiscard]] std::string scenarioHead(std::string_view device, const SurfaceModel& model,
                                       std::string_view comment);

/// One frame at `time` seconds, with every field that recognition reads.
[[nodiscard]] std::string scenarioFrame(std::string_view device, double time,
                                        std::span<const MTTouch> touches);

/// What a scenario calls a device of this kind: "mouse" or "pad".
[[nodiscard]] std::string_view scenarioDeviceName(const SurfaceModel& model);

}  // namespace velotap::lab
