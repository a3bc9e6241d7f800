#include "adapters/macos/keyboard/utf16.hpp"

namespace velotap {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHigh(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLow(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void append(std::string& text, char32_t code) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  const auto follow = [&put, code](int shift) { put(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    follow(0);
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    follow(6);
    follow(0);
  } else {
    put(0xF0 | code >> 18);
    follow(12);
    follow(6);
    follow(0);
  }
}

}  // namespace

std::string utf8Of(std::span<const char16_t> units) {
  std::string text;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char16_t unit = units[i];
    if (isHigh(unit) && i + 1 < units.size() && isLow(units[i + 1])) {
      append(text, 0x10000 + ((char32_t{unit} & 0x3FF) << 10) + (char32_t{units[i + 1]} & 0x3FF));
      ++i;
    } else {
      append(text, isHigh(unit) || isLow(unit) ? kReplacement : char32_t{unit});
    }
  }
  return text;
}

}  // namespace velotap
