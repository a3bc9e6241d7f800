#include "base/utf8.hpp"

#include <array>
#include <cstdint>

namespace velotap {
namespace {

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
constexpr char32_t kLastCode = 0x10FFFF;

constexpr bool isSurrogate(char32_t code) {
  return code >= 0xD800 && code <= 0xDFFF;
}

}  // namespace

std::optional<Utf8Character> utf8CharacterAt(std::string_view text, std::size_t start) noexcept {
  const auto byte = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  for (const LeadByte& lead : kLeadBytes) {
    if ((byte(start) & lead.mask) != lead.pattern) continue;
    if (lead.length > text.size() - start) return std::nullopt;
    char32_t code = byte(start) & static_cast<std::uint8_t>(~lead.mask);
    for (std::size_t i = start + 1; i < start + lead.length; ++i) {
      if ((byte(i) & 0xC0U) != 0x80U) return std::nullopt;
      code = code << 6U | (byte(i) & 0x3FU);
    }
    if (code < lead.smallest || code > kLastCode || isSurrogate(code)) return std::nullopt;
    return Utf8Character{code, lead.length};
  }
  return std::nullopt;
}

bool isUtf8(std::string_view text) noexcept {
  for (std::size_t i = 0; i < text.size();) {
    const auto character = utf8CharacterAt(text, i);
    if (!character) return false;
    i += character->length;
  }
  return true;
}

}  // namespace velotap
