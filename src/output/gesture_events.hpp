// Posting of what is neither a click nor a mouse event: shortcuts as a key press and release.
//
// Stateless; any thread.
#pragma once

#include <cstdint>

#include "platform/event_stream.hpp"

namespace velotap {

struct GestureEvents {
  /// Presses and releases one key with exactly these modifier flags; nothing when either event
  /// cannot be made.
  static void postKeystroke(EventStream& events, std::uint16_t keyCode, std::uint64_t flags);
};

}  // namespace velotap
