#include "adapters/linux/keyboard/layout_keys.hpp"

#include <algorithm>
#include <cstddef>

#include "adapters/linux/keyboard/shortcut_chord.hpp"

namespace velotap {
namespace {

// Keymaps count keys from 8, for the sake of a protocol that reserves the numbers below.
constexpr xkb_keycode_t kKeymapOffset = 8;

bool isControlCharacter(const std::string& text) {
  return text.size() == 1 && (static_cast<unsigned char>(text[0]) < 0x20 || text[0] == 0x7f);
}

std::string textOf(xkb_keysym_t symbol) {
  // Seven bytes: the longest UTF-8 sequence that the library may write, and its end.
  std::array<char, 8> buffer{};
  const int written = xkb_keysym_to_utf8(symbol, buffer.data(), buffer.size());
  if (written <= 1) return {};
  return {buffer.data(), static_cast<std::size_t>(written - 1)};
}

std::string unshiftedText(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t group) {
  const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(keymap, key);
  if (groups == 0) return {};
  const xkb_keysym_t* symbols = nullptr;
  const int count =
      xkb_keymap_key_get_syms_by_level(keymap, key, group % groups, /*level=*/0, &symbols);
  if (count != 1) return {};
  std::string text = textOf(symbols[0]);
  return isControlCharacter(text) ? std::string() : text;
}

}  // namespace

LayoutKeys::LayoutKeys(xkb_keymap* keymap, xkb_layout_index_t group) {
  for (std::uint16_t code = 0; code <= kLastVirtualKeyCode; ++code) {
    if (const auto key = evdevCodeOf(code)) {
      typed_[code] = unshiftedText(keymap, *key + kKeymapOffset, group);
    }
  }
  const bool typesPlus = std::ranges::find(typed_, "+") != typed_.end();
  for (const StandIn& standIn : kStandIns) {
    // Zoom In is content with either of its two characters.
    if (standIn.character == "=" && typesPlus) continue;
    if (std::ranges::find(typed_, standIn.character) == typed_.end()) {
      typed_[standIn.keyCode] = standIn.character;
    }
  }
}

std::optional<std::string> LayoutKeys::translate(std::uint16_t keyCode) const {
  if (keyCode > kLastVirtualKeyCode || typed_[keyCode].empty()) return std::nullopt;
  return typed_[keyCode];
}

}  // namespace velotap
