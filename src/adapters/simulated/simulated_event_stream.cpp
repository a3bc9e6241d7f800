#include "adapters/simulated/simulated_event_stream.hpp"

#include <utility>

namespace velotap {

std::optional<Point> SimulatedEventStream::pointerLocation() {
  const std::lock_guard guard(lock_);
  return pointer_;
}

std::optional<MouseEvent> SimulatedEventStream::makeMouse(MouseEventType type, int button,
                                                          Point location) {
  if (mouseFails_ && mouseFails_(type)) return std::nullopt;
  return MouseEvent{.type = type, .button = button, .location = location, .native = {}};
}

std::optional<KeyEvent> SimulatedEventStream::makeKey(std::uint16_t keyCode, bool down) {
  if (keyFails_ && keyFails_(down)) return std::nullopt;
  return KeyEvent{.keyCode = keyCode, .down = down, .flags = 0, .native = {}};
}

void SimulatedEventStream::setPointer(std::optional<Point> location) {
  const std::lock_guard guard(lock_);
  pointer_ = location;
}

Observation SimulatedEventStream::observePosts(std::function<void(const PostedEvent&)> observer) {
  return posted_.add(std::move(observer));
}

}  // namespace velotap
