#include "adapters/linux/keyboard/shortcut_chord.hpp"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <string>
#include <vector>

#include "adapters/linux/keyboard/key_codes.hpp"
#include "platform/event_stream.hpp"

namespace velotap {
namespace {

enum class Shortcut { back, forward, zoomIn, zoomOut };

std::optional<Shortcut> shortcutTyped(std::string_view character) noexcept {
  if (character == "[") return Shortcut::back;
  if (character == "]") return Shortcut::forward;
  if (character == "=" || character == "+") return Shortcut::zoomIn;
  if (character == "-") return Shortcut::zoomOut;
  return std::nullopt;
}

// The positions that the four have on the ANSI keyboard.
std::optional<Shortcut> shortcutAtPosition(std::uint16_t keyCode) noexcept {
  switch (keyCode) {
    case 33:
      return Shortcut::back;
    case 30:
      return Shortcut::forward;
    case 24:
      return Shortcut::zoomIn;
    case 27:
      return Shortcut::zoomOut;
    default:
      return std::nullopt;  // any other number is an ordinary key
  }
}

bool standsIn(std::uint16_t keyCode) noexcept {
  return std::ranges::any_of(kStandIns, [&](const StandIn& s) { return s.keyCode == keyCode; });
}

KeyChord chord(std::uint16_t modifier, std::uint16_t key) noexcept {
  KeyChord result;
  result.modifiers.push(modifier);
  result.key = key;
  return result;
}

KeyChord chordOf(Shortcut shortcut, std::optional<std::uint16_t> typingKey) noexcept {
  switch (shortcut) {
    case Shortcut::back:
      return chord(KEY_LEFTALT, KEY_LEFT);
    case Shortcut::forward:
      return chord(KEY_LEFTALT, KEY_RIGHT);
    case Shortcut::zoomIn:
      return chord(KEY_LEFTCTRL, typingKey.value_or(KEY_KPPLUS));
    case Shortcut::zoomOut:
      return chord(KEY_LEFTCTRL, typingKey.value_or(KEY_KPMINUS));
  }
  return {};
}

}  // namespace

bool operator==(const KeyChord& a, const KeyChord& b) noexcept {
  return a.key == b.key && std::ranges::equal(a.modifiers, b.modifiers);
}

std::optional<KeyChord> shortcutChord(std::uint16_t keyCode, std::uint64_t flags,
                                      const KeyTranslator* keys) {
  const std::optional<std::uint16_t> key = evdevCodeOf(keyCode);
  if ((flags & kCommandFlag) == 0) {
    if (!key) return std::nullopt;
    return KeyChord{.modifiers = {}, .key = *key};
  }
  const std::optional<std::string> character =
      keys != nullptr ? keys->translate(keyCode) : std::nullopt;
  if (character) {
    if (const auto shortcut = shortcutTyped(*character)) {
      return chordOf(*shortcut, standsIn(keyCode) ? std::nullopt : key);
    }
  }
  if (const auto shortcut = shortcutAtPosition(keyCode)) return chordOf(*shortcut, std::nullopt);
  if (!key) return std::nullopt;
  return chord(KEY_LEFTCTRL, *key);
}

std::span<const std::uint16_t> chordKeyCodes() noexcept {
  static const std::vector<std::uint16_t> codes = [] {
    std::vector<std::uint16_t> all = {KEY_LEFTALT, KEY_LEFTCTRL, KEY_LEFT,
                                      KEY_RIGHT,   KEY_KPPLUS,   KEY_KPMINUS};
    for (std::uint16_t code = 0; code <= kLastVirtualKeyCode; ++code) {
      if (const auto key = evdevCodeOf(code)) all.push_back(*key);
    }
    std::ranges::sort(all);
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
  }();
  return codes;
}

}  // namespace velotap
