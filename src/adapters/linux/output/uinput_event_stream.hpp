// Posting on Linux: middle clicks and keystrokes through the virtual pointer, gestures through the
// virtual touchpad.
//
// Any thread; nothing waits. Where a click lands is the desktop's business, so locations are only
// for diagnostics and for the practice surface.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "adapters/linux/keyboard/shortcut_chord.hpp"
#include "adapters/linux/output/paced_output.hpp"
#include "adapters/linux/output/pointer_locator.hpp"
#include "platform/event_stream.hpp"
#include "platform/keyboard_layout.hpp"

namespace velotap {

class UinputEventStream final : public EventStream {
 public:
  /// Gestures are handed on, and so is their announcement; see GestureTouchpad.
  using PostGesture = std::function<void(const GestureEvent&)>;
  using PrepareGestures = std::function<void()>;

  UinputEventStream(PacedOutput& output, PointerLocator& locator, PostGesture postGesture,
                    PrepareGestures prepareGestures);

  /// What the keys of the layout in use type; null when nobody knows. Main thread.
  void setLayout(std::unique_ptr<KeyTranslator> layout);

  [[nodiscard]] std::optional<Point> pointerLocation() override;
  [[nodiscard]] std::optional<MouseEvent> makeMouse(MouseEventType type, int button,
                                                    Point location) override;
  void post(const MouseEvent& event) override;
  [[nodiscard]] std::optional<KeyEvent> makeKey(std::uint16_t keyCode, bool down) override;
  void post(const KeyEvent& event) override;
  void post(const GestureEvent& event) override;
  void prepareGestures() override;

 private:
  // A layout that changes between the press and the release moves the keys of a chord, so the
  // release undoes what the press did instead of looking it up again.
  struct Pressed {
    std::uint16_t keyCode;
    KeyChord chord;
  };
  static constexpr std::size_t kMostPressed = 16;
  [[nodiscard]] std::optional<KeyChord> takePressedLocked(std::uint16_t keyCode);

  PacedOutput& output_;
  PointerLocator& locator_;
  PostGesture postGesture_;
  PrepareGestures prepareGestures_;
  std::mutex keyLock_;
  std::unique_ptr<KeyTranslator> layout_;
  std::array<std::optional<Pressed>, kMostPressed> pressed_;
};

}  // namespace velotap
