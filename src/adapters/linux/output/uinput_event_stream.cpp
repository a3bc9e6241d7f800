#include "adapters/linux/output/uinput_event_stream.hpp"

#include <algorithm>
#include <utility>

namespace velotap {

UinputEventStream::UinputEventStream(PacedOutput& output, PointerLocator& locator,
                                     PostGesture postGesture, PrepareGestures prepareGestures)
    : output_(output),
      locator_(locator),
      postGesture_(std::move(postGesture)),
      prepareGestures_(std::move(prepareGestures)) {}

void UinputEventStream::setLayout(std::unique_ptr<KeyTranslator> layout) {
  const std::lock_guard guard(keyLock_);
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
  const std::lock_guard guard(keyLock_);
  if (!event.down) {
    if (const auto chord = takePressedLocked(event.keyCode)) output_.postChord(*chord, false);
    return;
  }
  const auto chord = shortcutChord(event.keyCode, event.flags, layout_.get());
  if (!chord) return;
  // Pressed twice without a release: whatever the first press put down goes up before.
  if (const auto before = takePressedLocked(event.keyCode)) output_.postChord(*before, false);
  const auto place =
      std::find_if(pressed_.begin(), pressed_.end(), [](const auto& pressed) { return !pressed; });
  if (place == pressed_.end()) return;  // what could not be released later is not pressed
  *place = Pressed{.keyCode = event.keyCode, .chord = *chord};
  output_.postChord(*chord, true);
}

std::optional<KeyChord> UinputEventStream::takePressedLocked(std::uint16_t keyCode) {
  for (std::optional<Pressed>& pressed : pressed_) {
    if (!pressed || pressed->keyCode != keyCode) continue;
    const KeyChord chord = pressed->chord;
    pressed.reset();
    return chord;
  }
  return std::nullopt;
}

void UinputEventStream::post(const GestureEvent& event) {
  postGesture_(event);
}

void UinputEventStream::prepareGestures() {
  prepareGestures_();
}

}  // namespace velotap
