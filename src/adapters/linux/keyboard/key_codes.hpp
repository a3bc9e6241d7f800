// Which Linux key stands at the place of each virtual key code, and back.
//
// Virtual key codes name positions of the ANSI keyboard, evdev codes do the same in the kernel's
// numbering; neither says what a key types. The table holds the codes 0 to 64, those that are
// searched for a shortcut's character. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>

namespace velotap {

/// The searched codes run from 0 up to and including this one.
inline constexpr std::uint16_t kLastVirtualKeyCode = 64;

/// Nothing for a code beyond the table and for 52, which no keyboard bears.
[[nodiscard]] std::optional<std::uint16_t> evdevCodeOf(std::uint16_t virtualKeyCode) noexcept;

/// The inverse; nothing for a key that has no virtual key code in the table.
[[nodiscard]] std::optional<std::uint16_t> virtualKeyCodeOf(std::uint16_t evdevCode) noexcept;

}  // namespace velotap
