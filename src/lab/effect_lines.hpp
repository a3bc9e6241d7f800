// What a replay prints: one line of JSON for each observable effect.
//
// Pure; any thread. Keys come in a fixed order, times have six decimals, other numbers are the
// shortest that read back as the same, so equal effects are equal bytes on every machine.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adapters/simulated/simulated_clock.hpp"
#include "adapters/simulated/simulated_event_stream.hpp"
#include "adapters/simulated/simulated_event_taps.hpp"
#include "gestures/tap_activity_log.hpp"

namespace velotap::lab {

/// An event that the program posted.
[[nodiscard]] std::string postedLine(VirtualTime t, const PostedEvent& event);
/// A click of the system's that left the taps, or was dropped on the way.
[[nodiscard]] std::string clickLine(VirtualTime t, const SystemMouseEvent& in,
                                    const std::optional<SystemMouseEvent>& out);
[[nodiscard]] std::string activityLine(VirtualTime t, const TapActivity& activity);
[[nodiscard]] std::string listenersLine(VirtualTime t, bool running);
[[nodiscard]] std::string notificationLine(VirtualTime t, std::string_view name);
[[nodiscard]] std::string logLine(VirtualTime t, std::string_view line);
/// The heading of one file among several.
[[nodiscard]] std::string scenarioLine(std::string_view file);

}  // namespace velotap::lab
