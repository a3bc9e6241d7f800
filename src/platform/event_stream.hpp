// The port for making and posting input events.
//
// Any thread. Posting happens at the lowest level of the event stream, so that every event tap,
// the program's own included, sees the event. Creation can fail; posting has no result to check.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "base/point.hpp"

namespace velotap {

/// The numbers are the platform-independent event codes that appear in tap masks and scenarios.
enum class MouseEventType : std::uint32_t {
  leftDown = 1,
  leftUp = 2,
  rightDown = 3,
  rightUp = 4,
  leftDragged = 6,
  rightDragged = 7,
  otherDown = 25,
  otherUp = 26,
  otherDragged = 27,
};

inline constexpr int kMiddleButton = 2;

/// A mouse event ready to be posted. `native` is whatever the adapter needs to keep; null on
/// platforms whose events are plain values.
struct MouseEvent {
  MouseEventType type = MouseEventType::otherDown;
  int button = kMiddleButton;
  Point location;  ///< global display coordinates, origin at the top left of the main display
  std::shared_ptr<void> native;
};

/// Modifier bits of key events.
inline constexpr std::uint64_t kCommandFlag = 0x100000;

struct KeyEvent {
  std::uint16_t keyCode = 0;  ///< virtual key code: a position of the ANSI keyboard
  bool down = false;
  std::uint64_t flags = 0;
  std::shared_ptr<void> native;
};

enum class GestureKind { magnify, rotate };

/// The numbers are those of the event field.
enum class GesturePhase : int { began = 1, changed = 2, ended = 4, cancelled = 8 };

struct GestureEvent {
  GestureKind kind = GestureKind::magnify;
  GesturePhase phase = GesturePhase::began;
  double value = 0;  ///< magnify: relative size change; rotate: degrees, counter-clockwise positive
  Point location;
};

class EventStream {
 public:
  virtual ~EventStream() = default;
  /// Where the pointer is; nothing when no event can be made to read it.
  [[nodiscard]] virtual std::optional<Point> pointerLocation() = 0;
  [[nodiscard]] virtual std::optional<MouseEvent> makeMouse(MouseEventType type, int button,
                                                            Point location) = 0;
  virtual void post(const MouseEvent& event) = 0;
  [[nodiscard]] virtual std::optional<KeyEvent> makeKey(std::uint16_t keyCode, bool down) = 0;
  virtual void post(const KeyEvent& event) = 0;
  virtual void post(const GestureEvent& event) = 0;
  /// Gestures may be posted from now on: whatever takes its time before the first one is made
  /// ready.
  virtual void prepareGestures() {}
};

}  // namespace velotap
