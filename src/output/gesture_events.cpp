#include "output/gesture_events.hpp"

namespace velotap {

void GestureEvents::postKeystroke(EventStream& events, std::uint16_t keyCode, std::uint64_t flags) {
  auto press = events.makeKey(keyCode, true);
  auto release = events.makeKey(keyCode, false);
  if (!press || !release) return;
  press->flags = flags;
  release->flags = flags;
  events.post(*press);
  events.post(*release);
}

}  // namespace velotap
