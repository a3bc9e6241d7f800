#include "config/app_identifier_text.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

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

// White space and line ends, and the zero-width space, which the reference character set for
// trimming counts as white space too.
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

struct LeadByte {
  std::uint8_t mask;
  std::uint8_t pattern;
  std::size_t length;
  char32_t smallest;  // anything smaller should have been written shorter
};
constexpr std::array kLeadBytes = {
    LeadByte{0x80, 0x00, 1, 0},
    LeadByte{0xE0, 0xC0, 2, 0x80},
    LeadByte{0xF0, 0xE0, 3, 0x800},
    LeadByte{0xF8, 0xF0, 4, 0x10000},
};

std::optional<Character> decodeAt(std::string_view text, std::size_t start) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  for (const LeadByte& lead : kLeadBytes) {
    if ((byte(start) & lead.mask) != lead.pattern) continue;
    if (start + lead.length > text.size()) return std::nullopt;
    char32_t code = byte(start) & static_cast<std::uint8_t>(~lead.mask);
    for (std::size_t i = start + 1; i < start + lead.length; ++i) {
      if ((byte(i) & 0xC0) != 0x80) return std::nullopt;
      code = code << 6 | (byte(i) & 0x3FU);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < lead.smallest || code > 0x10FFFF || surrogate) return std::nullopt;
    return Character{code, start, start + lead.length};
  }
  return std::nullopt;
}

std::optional<std::vector<Character>> decode(std::string_view text) {
  std::vector<Character> characters;
  for (std::size_t i = 0; i < text.size();) {
    const auto character = decodeAt(text, i);
    if (!character) return std::nullopt;
    characters.push_back(*character);
    i = character->end;
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
