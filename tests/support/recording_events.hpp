// An event stream that writes down what was posted, one readable line for each event.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/log_text.hpp"
#include "platform/event_stream.hpp"

namespace velotap::test {

/// Any thread. Set the failures before threads start.
class RecordingEvents final : public EventStream {
 public:
  std::optional<Point> pointer = Point{512, 384.5};
  bool failPress = false;
  bool failRelease = false;
  bool failKeyDown = false;
  bool failKeyUp = false;
  bool keepGestures = true;          ///< off for long runs that only count
  std::function<void()> whenPosted;  ///< runs before each event is written down

  [[nodiscard]] std::optional<Point> pointerLocation() override {
    const std::lock_guard guard(lock_);
    return pointer;
  }
  void movePointer(std::optional<Point> to) {
    const std::lock_guard guard(lock_);
    pointer = to;
  }
  [[nodiscard]] std::optional<MouseEvent> makeMouse(MouseEventType type, int button,
                                                    Point location) override {
    if (type == MouseEventType::otherDown ? failPress : failRelease) return std::nullopt;
    return MouseEvent{.type = type, .button = button, .location = location, .native = {}};
  }
  void post(const MouseEvent& event) override {
    if (whenPosted) whenPosted();
    const char* type = event.type == MouseEventType::otherDown ? "down" : "up";
    add("mouse " + std::string(type) + " " + std::to_string(event.button) + " at " +
        pointText(event.location));
  }
  [[nodiscard]] std::optional<KeyEvent> makeKey(std::uint16_t keyCode, bool down) override {
    if (down ? failKeyDown : failKeyUp) return std::nullopt;
    // Fresh events may carry flags of keys that are held; whoever posts must replace them.
    return KeyEvent{.keyCode = keyCode, .down = down, .flags = 0xFF, .native = {}};
  }
  void post(const KeyEvent& event) override {
    if (whenPosted) whenPosted();
    add("key " + std::to_string(event.keyCode) + (event.down ? " down" : " up") +
        " flags=" + std::to_string(event.flags));
  }
  void post(const GestureEvent& event) override {
    if (whenPosted) whenPosted();
    const std::lock_guard guard(lock_);
    if (keepGestures) gestures_.push_back(event);
  }

  /// Mouse and key events posted since the last call.
  std::vector<std::string> take() {
    const std::lock_guard guard(lock_);
    return std::exchange(lines_, {});
  }
  /// Gesture events posted since the last call.
  std::vector<GestureEvent> takeGestures() {
    const std::lock_guard guard(lock_);
    return std::exchange(gestures_, {});
  }

 private:
  void add(std::string line) {
    const std::lock_guard guard(lock_);
    lines_.push_back(std::move(line));
  }
  std::mutex lock_;
  std::vector<std::string> lines_;
  std::vector<GestureEvent> gestures_;
};

}  // namespace velotap::test
