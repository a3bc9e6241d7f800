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

// What the second byte of a character may be depends on the first; all later ones are alike.
struct ByteRange {
  std::uint8_t first;
  std::uint8_t last;
  [[nodiscard]] constexpr bool contains(std::uint8_t byte) const {
    return byte >= first && byte <= last;
  }
};
constexpr ByteRange kContinuation{0x80, 0xBF};

constexpr ByteRange secondByteAfter(std::uint8_t lead) {
  switch (lead) {
    case 0xE0:
      return {0xA0, 0xBF};
    case 0xED:
      return {0x80, 0x9F};
    case 0xF0:
      return {0x90, 0xBF};
    case 0xF4:
      return {0x80, 0x8F};
    default:
      return kContinuation;
  }
}

constexpr std::size_t lengthAfter(std::uint8_t lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 1;
}

// How many bytes at `start`, where no character is, are the beginning of one; at least 1.
std::size_t brokenLength(std::string_view text, std::size_t start) {
  const auto lead = static_cast<std::uint8_t>(text[start]);
  std::size_t length = 1;
  while (length < lengthAfter(lead) && start + length < text.size()) {
    const ByteRange allowed = length == 1 ? secondByteAfter(lead) : kContinuation;
    if (!allowed.contains(static_cast<std::uint8_t>(text[start + length]))) break;
    ++length;
  }
  return length;
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

std::string repairedUtf8(std::string_view text) {
  std::string repaired;
  repaired.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    if (const auto character = utf8CharacterAt(text, i)) {
      repaired.append(text, i, character->length);
      i += character->length;
    } else {
      repaired += "\xEF\xBF\xBD";
      i += brokenLength(text, i);
    }
  }
  return repaired;
}

}  // namespace velotap
