// What the event tap asks of whoever knows the fingers: which clicks become middle clicks and which
// are swallowed.
//
// The tap must not know the recogniser, and the recogniser must not know the tap; this is all that
// passes between them. Any thread; the implementation guards its own state.
#pragma once

#include <optional>

namespace velotap {

/// Which physical button was turned into a middle button and is still down. One at a time.
struct ClickConversionState {
  enum class Button { left, right };
  std::optional<Button> heldButton;
};

class ClickPolicy {
 public:
  using Button = ClickConversionState::Button;
  virtual ~ClickPolicy() = default;

  /// A hardware button went down: running touch sessions contain a real click.
  virtual void notePhysicalButtonDown() = 0;

  /// Whether a left press is the echo of a tap that was already answered. Answers yes at most once
  /// for each such tap.
  [[nodiscard]] virtual bool shouldSwallowSyntheticLeftClick(bool canIdentifyPhysicalEvents,
                                                             bool wasObservedAtHID) = 0;

  /// Whether a press of this button is to become a middle press. A yes begins the conversion.
  [[nodiscard]] virtual bool shouldConvertClick(Button button) = 0;

  [[nodiscard]] virtual bool isConverting(Button button) = 0;
  /// Ends the conversion of this button; false when it is not the one that is held.
  virtual bool endConversion(Button button) = 0;
  /// Forgets the conversion and closes the window for swallowing; true when a button was held, and
  /// the caller must then release the middle button.
  [[nodiscard]] virtual bool abandonConversion() = 0;
};

}  // namespace velotap
