// What each key of one layout types while the shortcut modifier is held, as a plain table.
//
// Held Control neither shifts a key nor makes control characters here: a shortcut is named after
// the character on the unshifted key. Positions that never type stand in for the characters of
// shortcuts that the layout lacks (shortcut_chord.hpp). The table is computed at once, on the
// thread that reads the keymap; afterwards it is immutable and needs no library, so any thread may
// read it and it may outlive the keymap.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "adapters/linux/keyboard/key_codes.hpp"
#include "platform/keyboard_layout.hpp"

namespace velotap {

class LayoutKeys final : public KeyTranslator {
 public:
  /// `group` counts the keymap's layouts from 0. A key that has fewer wraps around.
  LayoutKeys(xkb_keymap* keymap, xkb_layout_index_t group);

  [[nodiscard]] std::optional<std::string> translate(std::uint16_t keyCode) const override;

  friend bool operator==(const LayoutKeys& a, const LayoutKeys& b) { return a.typed_ == b.typed_; }

 private:
  /// Empty where the key types nothing.
  std::array<std::string, kLastVirtualKeyCode + 1> typed_;
};

}  // namespace velotap
