#include "config/app_identifier_text.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "base/utf8.hpp"

namespace velotap {
namespace {

constexpr std::size_t kTooLong = 256;

struct CodeRange {
  char32_t first;
  char32_t last;
};

// Unicode categories Cc and Cf.
constexpr std::array kControlRanges = {
    CodeRange{0x0000, 0x001F},   CodeRange{0x007F, 0x009F},   CodeRange{0x00AD, 0x00AD},
    CodeRange{0x0600, 0x0605},   CodeRange{0x061C, 0x061C},   CodeRange{0x06DD, 0x06DD},
    CodeRange{0x070F, 0x070F},   CodeRange{0x0890, 0x0891},   CodeRange{0x08E2, 0x08E2},
    CodeRange{0x180E, 0x180E},   CodeRange{0x200B, 0x200F},   CodeRange{0x202A, 0x202E},
    CodeRange{0x2060, 0x2064},   CodeRange{0x2066, 0x206F},   CodeRange{0xFEFF, 0xFEFF},
    CodeRange{0xFFF9, 0xFFFB},   CodeRange{0x110BD, 0x110BD}, CodeRange{0x110CD, 0x110CD},
    CodeRange{0x13430, 0x1343F}, CodeRange{0x1BCA0, 0x1BCA3}, CodeRange{0x1D173, 0x1D17A},
    CodeRange{0xE0001, 0xE0001}, CodeRange{0xE0020, 0xE007F},
};

// Unicode categories Zs, Zl and Zp, the line ends among the controls, and the zero-width space: a
// list that was written on a Mac is trimmed of it there, and must read the same here.
constexpr std::array kSpaceRanges = {
    CodeRange{0x0009, 0x000D}, CodeRange{0x0020, 0x0020}, CodeRange{0x0085, 0x0085},
    CodeRange{0x00A0, 0x00A0}, CodeRange{0x1680, 0x1680}, CodeRange{0x2000, 0x200B},
    CodeRange{0x2028, 0x2029}, CodeRange{0x202F, 0x202F}, CodeRange{0x205F, 0x205F},
    CodeRange{0x3000, 0x3000},
};

template <std::size_t N>
bool isIn(const std::array<CodeRange, N>& ranges, char32_t code) {
  return std::any_of(ranges.begin(), ranges.end(), [code](const CodeRange& range) {
    return range.first <= code && code <= range.last;
  });
}

struct Character {
  char32_t code;
  std::size_t start;
  std::size_t end;
};

std::optional<std::vector<Character>> decode(std::string_view text) {
  std::vector<Character> characters;
  for (std::size_t i = 0; i < text.size();) {
    const auto character = utf8CharacterAt(text, i);
    if (!character) return std::nullopt;
    characters.push_back({character->code, i, i + character->length});
    i = characters.back().end;
  }
  return characters;
}

}  // namespace

std::optional<std::string> cleanAppIdentifier(std::string_view text) {
  const auto characters = decode(text);
  if (!characters) return std::nullopt;
  const auto isSpace = [](const Character& c) { return isIn(kSpaceRanges, c.code); };
  const auto first = std::find_if_not(characters->begin(), characters->end(), isSpace);
  const auto last = std::find_if_not(characters->rbegin(), characters->rend(), isSpace);
  if (first == characters->end()) return std::nullopt;
  if (last->end - first->start >= kTooLong) return std::nullopt;
  const bool controlled = std::any_of(
      first, last.base(), [](const Character& c) { return isIn(kControlRanges, c.code); });
  if (controlled) return std::nullopt;
  return std::string(text.substr(first->start, last->end - first->start));
}

}  // namespace velotap
