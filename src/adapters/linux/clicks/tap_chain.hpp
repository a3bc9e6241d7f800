// The taps that are installed, in the order in which a click passes them.
//
// Main thread, but for `active`, which other threads ask before they hold a click back. A tap may
// be enabled, disabled or destroyed from inside any callback.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include "adapters/linux/clicks/button_router.hpp"
#include "platform/event_taps.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

/// A button event of a device that passes the taps.
struct Click {
  std::uint16_t button = 0;  ///< BTN_LEFT, BTN_RIGHT or BTN_MIDDLE
  bool down = false;
  std::int64_t number = 0;  ///< the same for a press and its release
};

class TapChain {
 public:
  TapChain();
  ~TapChain();
  TapChain(const TapChain&) = delete;
  TapChain& operator=(const TapChain&) = delete;

  [[nodiscard]] std::unique_ptr<InstalledTap> install(TapLocation location, std::uint64_t mask,
                                                      EventTaps::Callbacks callbacks);

  /// Called whenever taps came, went or changed their state.
  void setChanged(std::function<void()> changed);

  /// Through the HID taps, then the session taps, newest first in each place. What the answer is
  /// to a release means nothing: it follows its press.
  [[nodiscard]] PressAnswer pass(const Click& click);
  /// Through the HID taps alone, for a click that went to the desktop by itself.
  void observe(const Click& click);
  /// Any thread: a click was not answered in time. No other is held back any more, and on the main
  /// thread every tap is disabled and told so.
  void reportTimeout(MainQueue& queue);

  /// Any thread: whether some enabled tap would see a click.
  [[nodiscard]] bool active() const noexcept;
  /// Any thread: a number that no click had before.
  [[nodiscard]] std::int64_t nextNumber() noexcept;
  /// Whether a session tap is enabled.
  [[nodiscard]] bool mayRewrite() const;

 private:
  class Event;
  class Handle;
  struct Tap;
  struct State;

  static void timedOut(State& state);

  std::shared_ptr<State> state_;
};

}  // namespace velotap
