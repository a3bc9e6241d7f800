// The system's mouse events in a simulation: each passes the taps of the HID level, then those of
// the session level, the newest tap of a level first, as in a system where taps are inserted at the
// head.
//
// Main thread only. Taps may be removed, and the system may disable them, at any time, their own
// callbacks included. This object outlives the taps that it made, or they remove nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/event_taps.hpp"

namespace velotap {

/// Where an event enters the stream: hardware at the lowest level, software possibly above it.
enum class EventOrigin { hid, session };

/// A mouse event as the system made it, or as it left the last tap.
struct SystemMouseEvent {
  MouseEventType type = MouseEventType::leftDown;
  int button = 0;
  std::int64_t number = 0;
};

class SimulatedEventTaps final : public EventTaps {
 public:
  SimulatedEventTaps();
  ~SimulatedEventTaps() override;

  [[nodiscard]] std::unique_ptr<InstalledTap> install(TapLocation location, std::uint64_t mask,
                                                      Callbacks callbacks) override;

  /// Whether taps of a level can be made at all; they can by default.
  void setInstallable(TapLocation location, bool can);

  /// Sends an event through the taps; nothing when one of them dropped it.
  std::optional<SystemMouseEvent> send(SystemMouseEvent event, EventOrigin origin);

  /// Disables the enabled taps of a level, as a system does, and tells them. A tap that does not
  /// revive stays disabled whatever its owner asks.
  void disable(TapLocation location, TapDisabled reason, bool revives);

  /// How many taps of a level exist, enabled or not.
  [[nodiscard]] std::size_t installed(TapLocation location) const;

 private:
  struct Tap;
  class Handle;
  struct State;

  std::shared_ptr<State> state_;
};

}  // namespace velotap
