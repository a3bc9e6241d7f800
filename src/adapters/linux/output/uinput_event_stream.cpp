#include "adapters/linux/output/uinput_event_stream.hpp"

#include <utility>

#include "adapters/linux/keyboard/shortcut_chord.hpp"

namespace velotap {

UinputEventStream::UinputEventStream(PacedOutput& output, PointerLocator& locator,
                                     PostGesture postGesture, PrepareGestures prepareGestures)
    : output_(output),
      locator_(locator),
      postGesture_(std::move(postGesture)),
      prepareGestures_(std::move(prepareGestures)) {}

void UinputEventStream::setLayout(std::unique_ptr<KeyTranslator> layout) {
  const std::lock_guard guard(layoutLock_);
  layout_ = std::move(layout);
}

std::optional<Point> UinputEventStream::pointerLocation() {
  return locator_.location();
}

std::optional<MouseEvent> UinputEventStream::makeMouse(MouseEventType type, int button,
                                                       Point location) {
  return MouseEvent{.type = type, .button = button, .location = location, .native = {}};
}

void UinputEventStream::post(const MouseEvent& event) {
  switch (event.type) {
    case MouseEventType::otherDown:
      output_.postMiddle(ClickPacer::Change::press);
      break;
    case MouseEventType::otherUp:
      output_.postMiddle(ClickPacer::Change::release);
      break;
    case MouseEventType::leftDown:
    case MouseEventType::leftUp:
    case MouseEventType::rightDown:
    case MouseEventType::rightUp:
    case MouseEventType::leftDragged:
    case MouseEventType::rightDragged:
    case MouseEventType::otherDragged:
      // The program makes no other mouse events; motion belongs to the real device.
      break;
  }
}

std::optional<KeyEvent> UinputEventStream::makeKey(std::uint16_t keyCode, bool down) {
  return KeyEvent{.keyCode = keyCode, .down = down, .flags = 0, .native = {}};
}

void UinputEventStream::post(const KeyEvent& event) {
  std::shared_ptr<KeyTranslator> layout;
  {
    const std::lock_guard guard(layoutLock_);
    layout = layout_;
  }
  if (const auto chord = shortcutChord(event.keyCode, event.flags, layout.get())) {
    output_.postChord(*chord, event.down);
  }
}

void UinputEventStream::post(const GestureEvent& event) {
  postGesture_(event);
}

void UinputEventStream::prepareGestures() {
  prepareGestures_();
}

}  // namespace velotap
