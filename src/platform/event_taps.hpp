// The port for watching and rewriting the system's own mouse events.
//
// Main thread throughout: callbacks run there, and taps are made and removed there. A callback
// must be quick; one that does not answer within the system's limit gets its tap disabled.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/event_stream.hpp"

namespace velotap {

enum class TapLocation { hid, session };

/// Why a tap was disabled from outside.
enum class TapDisabled { byTimeout, byUserInput };

/// An event on its way through a tap. The callback may rewrite type and button in place.
class TappedEvent {
 public:
  virtual ~TappedEvent() = default;
  [[nodiscard]] virtual MouseEventType type() const = 0;
  [[nodiscard]] virtual std::int64_t number() const = 0;
  virtual void setType(MouseEventType type) = 0;
  virtual void setButton(int button) = 0;
};

enum class TapAnswer { pass, drop };

/// A tap that exists but passes everything by until it is enabled. Removed when destroyed.
class InstalledTap {
 public:
  virtual ~InstalledTap() = default;
  virtual void enable(bool on) = 0;
  [[nodiscard]] virtual bool enabled() const = 0;
  /// Takes it off the main thread's loop, for good: whoever removes several taps takes all of them
  /// off before the first is destroyed, which does the same for what is still on. Means nothing to
  /// systems whose taps need no loop of their own.
  virtual void detach() {}
};

/// What somebody may want to do with the events of touch devices. Where a device has to be taken
/// from the system for that, it is taken only while it is wanted.
struct TapNeeds {
  bool mouseClicks = false;     ///< a click of a mouse with a touch surface may be rewritten
  bool mouseGestures = false;   ///< two or three fingers on one mean something else than scrolling
  bool trackpadClicks = false;  ///< a click of a trackpad may be rewritten
  friend bool operator==(const TapNeeds&, const TapNeeds&) = default;
};

class EventTaps {
 public:
  struct Callbacks {
    std::function<TapAnswer(TappedEvent&)> event;
    std::function<void(TapDisabled)> disabled;
  };
  virtual ~EventTaps() = default;
  /// Inserts a tap at the head of `location` for the event types whose bits are set in `mask`
  /// (bit n for code n of MouseEventType). Null when the system refuses, for want of permission.
  [[nodiscard]] virtual std::unique_ptr<InstalledTap> install(TapLocation location,
                                                              std::uint64_t mask,
                                                              Callbacks callbacks) = 0;
  /// Main thread, at the start and whenever the needs change. Means nothing to systems that pass
  /// every event through the taps anyway.
  virtual void setNeeds(const TapNeeds& /*needs*/) {}
};

}  // namespace velotap
