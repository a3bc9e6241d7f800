// The only place where middle-button events are made: a whole click after a tap, and a lone release
// that ends a button held by a converted click.
//
// Stateless; any thread. Failure to make an event is silent: the click is simply not posted.
#pragma once

#include <array>
#include <optional>

#include "platform/diagnostic_log.hpp"
#include "platform/event_stream.hpp"

namespace velotap {

/// Press and release at one place, or nothing when either cannot be made.
[[nodiscard]] std::optional<std::array<MouseEvent, 2>> middleEvents(EventStream& events,
                                                                    Point location);

/// One complete middle click where the pointer is now.
void postMiddle(EventStream& events, DiagnosticLog& log);

/// Only a release where the pointer is now. Posted whether or not a button is held: callers use it
/// only when a conversion held one.
void postMiddleRelease(EventStream& events, DiagnosticLog& log);

}  // namespace velotap
