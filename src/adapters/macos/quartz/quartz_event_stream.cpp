#include "adapters/macos/quartz/quartz_event_stream.hpp"

#include "adapters/macos/core_foundation/cf_ref.hpp"

namespace velotap {
namespace {

// Gesture events have no public constructor: an empty event becomes one by its type, and what it
// says stands in fields that have numbers only.
constexpr auto kGestureEvent = static_cast<CGEventType>(29);
constexpr auto kGestureHidType = static_cast<CGEventField>(110);
constexpr auto kGestureMagnification = static_cast<CGEventField>(113);
constexpr auto kGestureRotation = static_cast<CGEventField>(114);
constexpr auto kGesturePhase = static_cast<CGEventField>(132);
constexpr std::int64_t kHidTypeRotation = 5;
constexpr std::int64_t kHidTypeZoom = 8;

CGEventRef nativeOf(const std::shared_ptr<void>& native) {
  return static_cast<CGEventRef>(native.get());
}

void fillGesture(const QuartzApi& quartz, CGEventRef event, const GestureEvent& gesture) {
  const bool zoom = gesture.kind == GestureKind::magnify;
  // The fields of an event exist only once it has its type.
  quartz.CGEventSetType(event, kGestureEvent);
  quartz.CGEventSetIntegerValueField(event, kGestureHidType,
                                     zoom ? kHidTypeZoom : kHidTypeRotation);
  quartz.CGEventSetIntegerValueField(event, kGesturePhase, static_cast<int>(gesture.phase));
  quartz.CGEventSetDoubleValueField(event, zoom ? kGestureMagnification : kGestureRotation,
                                    gesture.value);
  quartz.CGEventSetFlags(event, 0);
  quartz.CGEventSetLocation(event, CGPoint{gesture.location.x, gesture.location.y});
}

}  // namespace

QuartzEventStream::QuartzEventStream(const CoreFoundationApi& cf, const QuartzApi& quartz,
                                     const ObjectiveCApi& runtime)
    : cf_(cf), quartz_(quartz), runtime_(runtime) {
  static_cast<void>(makeKey(0, true));
}

std::optional<Point> QuartzEventStream::pointerLocation() {
  const AutoreleasePool pool(runtime_);
  const CfRef<CGEventRef> event(cf_, quartz_.CGEventCreate(nullptr));
  if (!event) return std::nullopt;
  const CGPoint location = quartz_.CGEventGetLocation(event.get());
  return Point{location.x, location.y};
}

std::optional<MouseEvent> QuartzEventStream::makeMouse(MouseEventType type, int button,
                                                       Point location) {
  const AutoreleasePool pool(runtime_);
  const CGEventRef event = quartz_.CGEventCreateMouseEvent(nullptr, static_cast<CGEventType>(type),
                                                           CGPoint{location.x, location.y},
                                                           static_cast<CGMouseButton>(button));
  if (event == nullptr) return std::nullopt;
  return MouseEvent{type, button, location, owned(event)};
}

void QuartzEventStream::post(const MouseEvent& event) {
  if (event.native == nullptr) return;
  const AutoreleasePool pool(runtime_);
  quartz_.CGEventPost(kCGHIDEventTap, nativeOf(event.native));
}

std::optional<KeyEvent> QuartzEventStream::makeKey(std::uint16_t keyCode, bool down) {
  const AutoreleasePool pool(runtime_);
  const CGEventRef event = quartz_.CGEventCreateKeyboardEvent(nullptr, keyCode, down);
  if (event == nullptr) return std::nullopt;
  return KeyEvent{keyCode, down, 0, owned(event)};
}

void QuartzEventStream::post(const KeyEvent& event) {
  if (event.native == nullptr) return;
  const AutoreleasePool pool(runtime_);
  // Replaces what the event carries, such as a modifier that is held while it is made.
  quartz_.CGEventSetFlags(nativeOf(event.native), event.flags);
  quartz_.CGEventPost(kCGHIDEventTap, nativeOf(event.native));
}

void QuartzEventStream::post(const GestureEvent& gesture) {
  const AutoreleasePool pool(runtime_);
  const CfRef<CGEventRef> event(cf_, quartz_.CGEventCreate(nullptr));
  if (!event) return;
  fillGesture(quartz_, event.get(), gesture);
  quartz_.CGEventPost(kCGHIDEventTap, event.get());
}

std::shared_ptr<void> QuartzEventStream::owned(CGEventRef event) const {
  return {event, [&cf = cf_](void* reference) { cf.CFRelease(reference); }};
}

}  // namespace velotap
