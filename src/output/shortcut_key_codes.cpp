#include "output/shortcut_key_codes.hpp"

#include <algorithm>
#include <string_view>
#include <vector>

#include "base/log_text.hpp"
#include "platform/platform.hpp"

namespace velotap {
namespace {

struct ShortcutRow {
  std::string_view name;
  std::array<std::string_view, 2> characters;  // tried in order; an empty one is none
  std::uint16_t fallback;
};

constexpr std::array<ShortcutRow, kAllShortcuts.size()> kRows = {{
    {"back", {"[", ""}, 33},
    {"forward", {"]", ""}, 30},
    {"zoomIn", {"=", "+"}, 24},
    {"zoomOut", {"-", ""}, 27},
}};

// Keys above are function, keypad and navigation keys, which type no character of a shortcut.
constexpr std::uint16_t kLastKeyCode = 64;

class TranslationCache {
 public:
  explicit TranslationCache(
      const std::function<std::optional<std::string>(std::uint16_t)>& translate)
      : translate_(translate) {}

  bool types(std::uint16_t code, std::string_view character) {
    auto& entry = entries_[code];
    if (!entry) entry = translate_(code);
    return *entry && **entry == character;
  }

 private:
  const std::function<std::optional<std::string>(std::uint16_t)>& translate_;
  std::array<std::optional<std::optional<std::string>>, kLastKeyCode + 1> entries_;
};

std::uint16_t resolve(const ShortcutRow& row, TranslationCache& cache) {
  for (const std::string_view character : row.characters) {
    if (character.empty()) continue;
    if (cache.types(row.fallback, character)) return row.fallback;
    for (std::uint16_t code = 0; code <= kLastKeyCode; ++code) {
      if (code != row.fallback && cache.types(code, character)) return code;
    }
  }
  return row.fallback;
}

}  // namespace

ShortcutKeyCodeTable fallbackKeyCodes() noexcept {
  ShortcutKeyCodeTable table{};
  for (std::size_t i = 0; i < kRows.size(); ++i) table[i] = kRows[i].fallback;
  return table;
}

ShortcutKeyCodeTable resolveKeyCodes(
    const std::function<std::optional<std::string>(std::uint16_t)>& translate) {
  TranslationCache cache(translate);
  ShortcutKeyCodeTable table{};
  for (std::size_t i = 0; i < kRows.size(); ++i) table[i] = resolve(kRows[i], cache);
  return table;
}

ShortcutKeyCodes::ShortcutKeyCodes(KeyboardLayout& layout, DiagnosticLog& log)
    : layout_(layout), log_(log) {}

ShortcutKeyCodes& ShortcutKeyCodes::shared() {
  static ShortcutKeyCodes instance(Platform::current().keyboardLayout, Platform::current().log);
  return instance;
}

void ShortcutKeyCodes::start() {
  refresh();
  if (!observer_.active()) {
    observer_ = layout_.observeChanges([this] { refresh(); });
  }
}

void ShortcutKeyCodes::refresh() {
  const auto translator = layout_.current();
  const ShortcutKeyCodeTable table =
      translator ? resolveKeyCodes([&](std::uint16_t code) { return translator->translate(code); })
                 : fallbackKeyCodes();
  {
    const std::lock_guard guard(lock_);
    keyCodes_ = table;
  }
  if (!log_.enabled()) return;
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    texts.push_back(std::string(kRows[i].name) + "=" + std::to_string(table[i]));
  }
  std::sort(texts.begin(), texts.end());
  log_.line("shortcut key codes: " + listText(texts));
}

std::uint16_t ShortcutKeyCodes::keyCode(SynthesizedShortcut shortcut) const {
  const std::lock_guard guard(lock_);
  return keyCodes_[static_cast<std::size_t>(shortcut)];
}

}  // namespace velotap
