#include "adapters/linux/keyboard/shortcut_chord.hpp"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "adapters/linux/keyboard/keymap_compiler.hpp"
#include "platform/event_stream.hpp"

namespace velotap {
namespace {

class Typing final : public KeyTranslator {
 public:
  explicit Typing(std::map<std::uint16_t, std::string> keys) : keys_(std::move(keys)) {}
  [[nodiscard]] std::optional<std::string> translate(std::uint16_t keyCode) const override {
    const auto found = keys_.find(keyCode);
    if (found == keys_.end()) return std::nullopt;
    return found->second;
  }

 private:
  std::map<std::uint16_t, std::string> keys_;
};

KeyChord pressed(std::uint16_t modifier, std::uint16_t key) {
  KeyChord chord;
  chord.modifiers.push(modifier);
  chord.key = key;
  return chord;
}

// The code that a layout gives a shortcut: the first key, the fallback before all others, that
// types the first of the characters that any key types.
std::uint16_t codeFor(const KeyTranslator& keys, const std::vector<std::string>& characters,
                      std::uint16_t fallback) {
  std::vector<std::uint16_t> codes = {fallback};
  for (std::uint16_t code = 0; code <= 64; ++code) {
    if (code != fallback) codes.push_back(code);
  }
  for (const auto& character : characters) {
    for (const std::uint16_t code : codes) {
      if (keys.translate(code) == character) return code;
    }
  }
  return fallback;
}

struct LayoutCase {
  const char* layout;
  const char* variant;
  std::uint16_t plusKey;
  std::uint16_t minusKey;
};

class ChordOnLayout : public testing::TestWithParam<LayoutCase> {};

TEST_P(ChordOnLayout, everyShortcutBecomesTheDesktopsOwn) {
  const LayoutCase& c = GetParam();
  const auto keys = groupAt(
      compileNames({.model = "pc105", .layout = c.layout, .variant = c.variant, .options = ""}), 0);
  ASSERT_TRUE(keys);
  const auto chordFor = [&](const std::vector<std::string>& characters, std::uint16_t fallback) {
    return shortcutChord(codeFor(*keys, characters, fallback), kCommandFlag, &*keys);
  };
  EXPECT_EQ(chordFor({"["}, 33), pressed(KEY_LEFTALT, KEY_LEFT));
  EXPECT_EQ(chordFor({"]"}, 30), pressed(KEY_LEFTALT, KEY_RIGHT));
  EXPECT_EQ(chordFor({"=", "+"}, 24), pressed(KEY_LEFTCTRL, c.plusKey));
  EXPECT_EQ(chordFor({"-"}, 27), pressed(KEY_LEFTCTRL, c.minusKey));
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, ChordOnLayout,
    testing::Values(
        LayoutCase{"us", "", KEY_EQUAL, KEY_MINUS}, LayoutCase{"gb", "", KEY_EQUAL, KEY_MINUS},
        LayoutCase{"us", "dvorak", KEY_RIGHTBRACE, KEY_APOSTROPHE},
        LayoutCase{"de", "", KEY_RIGHTBRACE, KEY_SLASH},
        LayoutCase{"de", "nodeadkeys", KEY_RIGHTBRACE, KEY_SLASH},
        LayoutCase{"es", "", KEY_RIGHTBRACE, KEY_SLASH},
        LayoutCase{"it", "", KEY_RIGHTBRACE, KEY_SLASH}, LayoutCase{"fr", "", KEY_EQUAL, KEY_6},
        LayoutCase{"se", "", KEY_MINUS, KEY_SLASH}, LayoutCase{"ru", "", KEY_EQUAL, KEY_MINUS},
        LayoutCase{"bg", "phonetic", KEY_EQUAL, KEY_MINUS},
        LayoutCase{"bg", "", KEY_KPPLUS, KEY_MINUS},   // = and + need Shift
        LayoutCase{"ch", "", KEY_KPPLUS, KEY_SLASH},   // likewise
        LayoutCase{"jp", "", KEY_KPPLUS, KEY_MINUS},   // likewise, and ] stands at backslash
        LayoutCase{"tr", "", KEY_KPPLUS, KEY_EQUAL}),  // - where Zoom In falls back to
    [](const auto& layout) {
      return std::string(layout.param.layout) + (*layout.param.variant ? "_" : "") +
             layout.param.variant;
    });

TEST(ShortcutChord, withoutALayoutThePositionsTell) {
  EXPECT_EQ(shortcutChord(33, kCommandFlag, nullptr), pressed(KEY_LEFTALT, KEY_LEFT));
  EXPECT_EQ(shortcutChord(30, kCommandFlag, nullptr), pressed(KEY_LEFTALT, KEY_RIGHT));
  EXPECT_EQ(shortcutChord(24, kCommandFlag, nullptr), pressed(KEY_LEFTCTRL, KEY_KPPLUS));
  EXPECT_EQ(shortcutChord(27, kCommandFlag, nullptr), pressed(KEY_LEFTCTRL, KEY_KPMINUS));
}

TEST(ShortcutChord, whatAKeyTypesWinsOverItsPosition) {
  const Typing keys({{24, "]"}, {30, "+"}, {27, "="}, {33, "-"}});
  EXPECT_EQ(shortcutChord(24, kCommandFlag, &keys), pressed(KEY_LEFTALT, KEY_RIGHT));
  EXPECT_EQ(shortcutChord(30, kCommandFlag, &keys), pressed(KEY_LEFTCTRL, KEY_RIGHTBRACE));
  EXPECT_EQ(shortcutChord(27, kCommandFlag, &keys), pressed(KEY_LEFTCTRL, KEY_MINUS));
  EXPECT_EQ(shortcutChord(33, kCommandFlag, &keys), pressed(KEY_LEFTCTRL, KEY_LEFTBRACE));
}

TEST(ShortcutChord, anotherCommandKeystrokeBecomesControl) {
  const Typing keys({{8, "c"}});
  EXPECT_EQ(shortcutChord(8, kCommandFlag, &keys), pressed(KEY_LEFTCTRL, KEY_C));
  EXPECT_EQ(shortcutChord(8, kCommandFlag, nullptr), pressed(KEY_LEFTCTRL, KEY_C));
}

TEST(ShortcutChord, withoutCommandTheKeyIsPressedAlone) {
  const Typing keys({{33, "["}});
  EXPECT_EQ(shortcutChord(33, 0, &keys), (KeyChord{.modifiers = {}, .key = KEY_LEFTBRACE}));
  EXPECT_EQ(shortcutChord(33, 0x20000, &keys), (KeyChord{.modifiers = {}, .key = KEY_LEFTBRACE}));
}

TEST(ShortcutChord, aCodeWithoutAKeyGivesNothing) {
  EXPECT_EQ(shortcutChord(52, kCommandFlag, nullptr), std::nullopt);
  EXPECT_EQ(shortcutChord(52, 0, nullptr), std::nullopt);
  EXPECT_EQ(shortcutChord(65, kCommandFlag, nullptr), std::nullopt);
  EXPECT_EQ(shortcutChord(0xffff, kCommandFlag, nullptr), std::nullopt);
}

TEST(ShortcutChord, everyChordStaysWithinTheDeclaredKeys) {
  const std::set<std::uint16_t> declared(chordKeyCodes().begin(), chordKeyCodes().end());
  EXPECT_EQ(declared.size(), chordKeyCodes().size());
  for (std::uint16_t code = 0; code <= kLastVirtualKeyCode; ++code) {
    for (const char* character : {"[", "]", "=", "+", "-", "x"}) {
      const Typing keys({{code, character}});
      for (const std::uint64_t flags : {std::uint64_t{0}, kCommandFlag}) {
        const auto chord = shortcutChord(code, flags, &keys);
        if (!chord) continue;
        EXPECT_TRUE(declared.contains(chord->key)) << code << character;
        for (const auto modifier : chord->modifiers) EXPECT_TRUE(declared.contains(modifier));
      }
    }
  }
}

}  // namespace
}  // namespace velotap
