// Which keys to press on Linux for a keystroke that the program expresses as on its own platform:
// a virtual key code with the Command flag.
//
// The four shortcuts of the program mean something to applications here only in the desktop's own
// form: Back is Alt+Left, Forward Alt+Right, Zoom In is Control and the key that types + or =,
// Zoom Out Control and the key that types -. Where no key types such a character by itself, the
// keypad's key is pressed, which means plus or minus on every layout. A Command keystroke that is
// none of the four becomes Control and the key at that position; one without Command is the key
// alone.
//
// Which shortcut is meant is told by what the key types, and where it types none of their
// characters by its position, since each shortcut has a position that it falls back to. Pure; any
// thread, if the translator allows it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "base/fixed_vector.hpp"
#include "platform/keyboard_layout.hpp"

namespace velotap {

/// Evdev codes: modifiers in the order in which they go down, and the key that they modify.
struct KeyChord {
  FixedVector<std::uint16_t, 2> modifiers;
  std::uint16_t key = 0;
};
[[nodiscard]] bool operator==(const KeyChord& a, const KeyChord& b) noexcept;

/// `keys` may be null: what the keys type is then unknown. Nothing when no key stands at the code.
[[nodiscard]] std::optional<KeyChord> shortcutChord(std::uint16_t keyCode, std::uint64_t flags,
                                                    const KeyTranslator* keys);

/// Every evdev code that a chord can hold, for whoever must declare a keyboard's keys beforehand.
[[nodiscard]] std::span<const std::uint16_t> chordKeyCodes() noexcept;

/// A character by which a shortcut is found, and a position whose key never types anything. When
/// no key of a layout types the character, the layout says that this position does, so that two
/// shortcuts never meet on one key: on a German keyboard the position that Forward falls back to
/// is the one that types the + of Zoom In.
struct StandIn {
  std::string_view character;
  std::uint16_t keyCode;
};
inline constexpr std::array<StandIn, 4> kStandIns = {
    StandIn{.character = "[", .keyCode = 60},
    StandIn{.character = "]", .keyCode = 61},
    StandIn{.character = "=", .keyCode = 62},
    StandIn{.character = "-", .keyCode = 63},
};

}  // namespace velotap
