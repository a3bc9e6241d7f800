#include "adapters/linux/keyboard/key_codes.hpp"

#include <linux/input-event-codes.h>

#include <array>
#include <cstddef>

namespace velotap {
namespace {

// The kernel gives no key the number 0.
constexpr std::uint16_t kNone = KEY_RESERVED;

// Indexed by virtual key code; the number beside a row is the code of its first key.
// clang-format off
constexpr std::array<std::uint16_t, kLastVirtualKeyCode + 1> kEvdevCodes = {
    KEY_A,            KEY_S,            KEY_D,            KEY_F,  // 0
    KEY_H,            KEY_G,            KEY_Z,            KEY_X,  // 4
    KEY_C,            KEY_V,            KEY_102ND,        KEY_B,  // 8
    KEY_Q,            KEY_W,            KEY_E,            KEY_R,  // 12
    KEY_Y,            KEY_T,            KEY_1,            KEY_2,  // 16
    KEY_3,            KEY_4,            KEY_6,            KEY_5,  // 20
    KEY_EQUAL,        KEY_9,            KEY_7,            KEY_MINUS,  // 24
    KEY_8,            KEY_0,            KEY_RIGHTBRACE,   KEY_O,  // 28
    KEY_U,            KEY_LEFTBRACE,    KEY_I,            KEY_P,  // 32
    KEY_ENTER,        KEY_L,            KEY_J,            KEY_APOSTROPHE,  // 36
    KEY_K,            KEY_SEMICOLON,    KEY_BACKSLASH,    KEY_COMMA,  // 40
    KEY_SLASH,        KEY_N,            KEY_M,            KEY_DOT,  // 44
    KEY_TAB,          KEY_SPACE,        KEY_GRAVE,        KEY_BACKSPACE,  // 48
    kNone,            KEY_ESC,          KEY_RIGHTMETA,    KEY_LEFTMETA,  // 52
    KEY_LEFTSHIFT,    KEY_CAPSLOCK,     KEY_LEFTALT,      KEY_LEFTCTRL,  // 56
    KEY_RIGHTSHIFT,   KEY_RIGHTALT,     KEY_RIGHTCTRL,    KEY_FN,  // 60
    KEY_F17,  // 64
};
// clang-format on

}  // namespace

std::optional<std::uint16_t> evdevCodeOf(std::uint16_t virtualKeyCode) noexcept {
  if (virtualKeyCode > kLastVirtualKeyCode) return std::nullopt;
  const std::uint16_t code = kEvdevCodes[virtualKeyCode];
  if (code == kNone) return std::nullopt;
  return code;
}

std::optional<std::uint16_t> virtualKeyCodeOf(std::uint16_t evdevCode) noexcept {
  if (evdevCode == kNone) return std::nullopt;
  for (std::size_t i = 0; i < kEvdevCodes.size(); ++i) {
    if (kEvdevCodes[i] == evdevCode) return static_cast<std::uint16_t>(i);
  }
  return std::nullopt;
}

}  // namespace velotap
