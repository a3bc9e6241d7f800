#include "localization/text_search.hpp"

#include <algorithm>
#include <cstddef>

#include "base/utf8.hpp"
#include "localization/letter_folding.hpp"

namespace velotap {
namespace {

constexpr char32_t kSharpS = 0xDF;
constexpr char32_t kCapitalSharpS = 0x1E9E;

bool isCombiningMark(char32_t c) {
  return (c >= 0x300 && c <= 0x36F) || (c >= 0x483 && c <= 0x487);
}

bool isBlank(char32_t c) {
  return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
         (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
         c == 0x3000;
}

bool isDigit(char32_t c) {
  return c >= U'0' && c <= U'9';
}

// A byte that starts no character stands for itself, above all characters.
Utf8Character characterAt(std::string_view text, std::size_t position) {
  const auto character = utf8CharacterAt(text, position);
  if (character) return *character;
  return {.code = 0x110000U + static_cast<unsigned char>(text[position]), .length = 1};
}

// The digits from a position on, without leading zeros.
std::u32string_view takeNumber(std::u32string_view text, std::size_t& position) {
  while (position < text.size() && text[position] == U'0') ++position;
  const std::size_t start = position;
  while (position < text.size() && isDigit(text[position])) ++position;
  return text.substr(start, position - start);
}

std::weak_ordering compareNumbers(std::u32string_view left, std::u32string_view right) {
  if (left.size() != right.size()) return left.size() <=> right.size();
  return left.compare(right) <=> 0;
}

}  // namespace

std::u32string foldedForSearch(std::string_view text) {
  std::u32string folded;
  folded.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Character character = characterAt(text, position);
    position += character.length;
    if (isCombiningMark(character.code)) continue;
    if (character.code == kSharpS || character.code == kCapitalSharpS) {
      folded += U"ss";
    } else {
      folded += foldedLetter(character.code);
    }
  }
  return folded;
}

bool containsText(std::string_view text, std::string_view query) {
  return foldedForSearch(text).find(foldedForSearch(query)) != std::u32string::npos;
}

std::weak_ordering compareText(std::string_view left, std::string_view right) {
  const std::u32string a = foldedForSearch(left);
  const std::u32string b = foldedForSearch(right);
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    if (isDigit(a[i]) && isDigit(b[j])) {
      const auto numberA = takeNumber(a, i);
      const auto numberB = takeNumber(b, j);
      if (const auto order = compareNumbers(numberA, numberB); std::is_neq(order)) {
        return order;
      }
    } else if (a[i] != b[j]) {
      return a[i] <=> b[j];
    } else {
      ++i;
      ++j;
    }
  }
  return (a.size() - i) <=> (b.size() - j);
}

std::string_view trimmedText(std::string_view text) {
  std::size_t first = text.size();
  std::size_t last = 0;
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Character character = characterAt(text, position);
    if (!isBlank(character.code)) {
      first = std::min(first, position);
      last = position + character.length;
    }
    position += character.length;
  }
  return first < last ? text.substr(first, last - first) : std::string_view();
}

}  // namespace velotap
