// An event stream without a screen: tells where the pointer is said to be, and shows every posted
// event to whoever observes.
//
// Posted events enter at the lowest level and pass every tap, but no tap of the simulated desktop
// sees them: the program posts middle-button, key and gesture events, and the taps that exist watch
// the left and the right button only. A loop back into the taps would have nothing to do.
//
// Any thread; observers run on the posting thread. Failures are switched by the simulation's owner
// before anybody posts.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <variant>

#include "base/observer_list.hpp"
#include "platform/event_stream.hpp"

namespace velotap {

using PostedEvent = std::variant<MouseEvent, KeyEvent, GestureEvent>;

class SimulatedEventStream final : public EventStream {
 public:
  [[nodiscard]] std::optional<Point> pointerLocation() override;
  [[nodiscard]] std::optional<MouseEvent> makeMouse(MouseEventType type, int button,
                                                    Point location) override;
  void post(const MouseEvent& event) override { posted_.notify(event); }
  [[nodiscard]] std::optional<KeyEvent> makeKey(std::uint16_t keyCode, bool down) override;
  void post(const KeyEvent& event) override { posted_.notify(event); }
  void post(const GestureEvent& event) override { posted_.notify(event); }

  void prepareGestures() override { ++preparations_; }
  /// How often somebody announced gestures.
  [[nodiscard]] int preparations() const noexcept { return preparations_; }

  /// Nothing: no event can be made to read the location.
  void setPointer(std::optional<Point> location);
  /// Decides which events cannot be made; by default all can.
  void setMouseFailure(std::function<bool(MouseEventType)> fails) {
    mouseFails_ = std::move(fails);
  }
  void setKeyFailure(std::function<bool(bool down)> fails) { keyFails_ = std::move(fails); }

  [[nodiscard]] Observation observePosts(std::function<void(const PostedEvent&)> observer);

 private:
  std::atomic<int> preparations_ = 0;
  mutable std::mutex lock_;
  std::optional<Point> pointer_ = Point{512, 384.5};
  std::function<bool(MouseEventType)> mouseFails_;
  std::function<bool(bool)> keyFails_;
  ObserverList<const PostedEvent&> posted_;
};

}  // namespace velotap
