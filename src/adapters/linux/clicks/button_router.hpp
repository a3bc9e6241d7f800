// Where the buttons of a mirrored device leave, and what each of them holds down there.
//
// A press is answered once and its release follows it: whatever happens to the taps in between,
// the release undoes what the press did. So nothing here can leave a button down. The kernel's
// driver makes a middle button of the zone between the two buttons of a touch mouse, which has
// none; that one is the left button here, and what the fingers mean makes it a middle one or not.
//
// Pure; not thread-safe.
#pragma once

#include <cstdint>
#include <vector>

namespace velotap {

/// Whether a key code is one of the buttons that pass the taps.
[[nodiscard]] bool isClickButton(std::uint16_t code) noexcept;

/// What the taps made of a press.
enum class PressAnswer { unchanged, middle, dropped };

/// A change of a button for one of the two devices it may leave by.
struct Emission {
  enum class Outlet {
    none,
    mirror,   ///< the device's own mirror image
    pointer,  ///< the virtual pointer, whose middle button converted clicks press
  };
  Outlet outlet = Outlet::none;
  std::uint16_t code = 0;
  bool down = false;
  friend bool operator==(const Emission&, const Emission&) = default;
};

class ButtonRouter {
 public:
  /// `middleIsPhantom`: the device has no middle button of its own.
  explicit ButtonRouter(bool middleIsPhantom) noexcept : middleIsPhantom_(middleIsPhantom) {}

  /// The button that a press of `code` is taken for.
  [[nodiscard]] std::uint16_t meaning(std::uint16_t code) const noexcept;

  /// A second press of a button that is down changes nothing.
  [[nodiscard]] Emission press(std::uint16_t code, PressAnswer answer);
  /// Nothing for a button that is not down.
  [[nodiscard]] Emission release(std::uint16_t code);
  /// Everything that is down, released, in the order of the presses.
  [[nodiscard]] std::vector<Emission> releaseAll();

  [[nodiscard]] bool isDown(std::uint16_t code) const noexcept;
  [[nodiscard]] bool nothingDown() const noexcept { return held_.empty(); }

 private:
  struct Held {
    std::uint16_t code;
    Emission press;
  };
  [[nodiscard]] bool holds(const Emission& press) const noexcept;

  bool middleIsPhantom_;
  std::vector<Held> held_;
};

}  // namespace velotap
