#include "localization/text_format.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace velotap {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr int kMostArguments = 99;

/// A piece of a pattern: literal text, or a specifier.
struct Piece {
  std::string_view text;
  std::optional<FormatSpecifier> specifier;
};

// "12$" at the start of the text; 0 when there is none.
int takeArgumentNumber(std::string_view& text) {
  const auto digits = std::min(text.find_first_not_of(kDigits), text.size());
  if (digits == 0 || digits > 2 || digits >= text.size() || text[digits] != '$') return 0;
  int number = 0;
  for (const char c : text.substr(0, digits)) number = number * 10 + (c - '0');
  if (number < 1 || number > kMostArguments) return 0;
  text.remove_prefix(digits + 1);
  return number;
}

std::optional<FormatType> takeConversion(std::string_view& text) {
  constexpr std::string_view kIntegers[] = {"d", "i", "ld", "li", "lld", "lli", "lu", "llu", "u"};
  if (!text.empty() && text.front() == '@') {
    text.remove_prefix(1);
    return FormatType::text;
  }
  for (const std::string_view conversion : kIntegers) {
    if (text.substr(0, conversion.size()) == conversion) {
      text.remove_prefix(conversion.size());
      return FormatType::integer;
    }
  }
  return std::nullopt;
}

std::vector<Piece> pieces(std::string_view pattern) {
  std::vector<Piece> result;
  int next = 1;
  while (!pattern.empty()) {
    const auto sign = std::min(pattern.find('%'), pattern.size());
    if (sign > 0) result.push_back({pattern.substr(0, sign), std::nullopt});
    if (sign == pattern.size()) break;
    pattern.remove_prefix(sign);
    if (pattern.substr(0, 2) == "%%") {
      result.push_back({pattern.substr(0, 1), std::nullopt});
      pattern.remove_prefix(2);
      continue;
    }
    std::string_view rest = pattern.substr(1);
    const int chosen = takeArgumentNumber(rest);
    if (const auto type = takeConversion(rest)) {
      const int argument = chosen != 0 ? chosen : next++;
      result.push_back({pattern.substr(0, pattern.size() - rest.size()),
                        FormatSpecifier{.argument = argument, .type = *type}});
      pattern = rest;
    } else {
      result.push_back({pattern.substr(0, 1), std::nullopt});
      pattern.remove_prefix(1);
    }
  }
  return result;
}

std::string filled(const Piece& piece, const FormatArguments& arguments) {
  const auto index = static_cast<std::size_t>(piece.specifier->argument - 1);
  if (index < arguments.size()) {
    const FormatArgument& argument = arguments[index];
    if (const auto* text = std::get_if<std::string>(&argument)) {
      if (piece.specifier->type == FormatType::text) return *text;
    } else if (piece.specifier->type == FormatType::integer) {
      return std::to_string(std::get<std::int64_t>(argument));
    }
  }
  return std::string(piece.text);
}

}  // namespace

std::vector<FormatSpecifier> formatSpecifiers(std::string_view pattern) {
  std::vector<FormatSpecifier> result;
  for (const Piece& piece : pieces(pattern)) {
    if (piece.specifier) result.push_back(*piece.specifier);
  }
  std::sort(result.begin(), result.end(), [](const FormatSpecifier& a, const FormatSpecifier& b) {
    return std::pair(a.argument, a.type) < std::pair(b.argument, b.type);
  });
  return result;
}

std::string formatText(std::string_view pattern, const FormatArguments& arguments) {
  std::string result;
  for (const Piece& piece : pieces(pattern)) {
    result += piece.specifier ? filled(piece, arguments) : std::string(piece.text);
  }
  return result;
}

}  // namespace velotap
