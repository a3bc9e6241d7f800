#include "lab/scenario_words.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace velotap::lab {
namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::size_t kMostDecimals = 9;
constexpr std::size_t kMostWholeDigits = 9;

bool isBlank(char c) {
  return kBlanks.find(c) != std::string_view::npos;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

template <typename Number>
std::optional<Number> parseWhole(std::string_view text) {
  Number number{};
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

std::string_view Words::next() {
  const std::size_t length = std::min(rest_.find_first_of(kBlanks), rest_.size());
  const std::string_view word = rest_.substr(0, length);
  rest_.remove_prefix(length);
  skipBlanks();
  return word;
}

std::string_view Words::rest() {
  std::string_view all = rest_;
  while (!all.empty() && isBlank(all.back())) all.remove_suffix(1);
  rest_ = {};
  return all;
}

void Words::skipBlanks() {
  while (!rest_.empty() && isBlank(rest_.front())) rest_.remove_prefix(1);
}

std::string_view withoutComment(std::string_view line, bool quotes) {
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (quoted && c == '\\') {
      ++i;
    } else if (quotes && c == '"') {
      quoted = !quoted;
    } else if (c == '#' && !quoted && (i == 0 || isBlank(line[i - 1]))) {
      return line.substr(0, i);
    }
  }
  return line;
}

std::optional<Halves> splitAt(std::string_view text, char separator) {
  const std::size_t place = text.find(separator);
  if (place == std::string_view::npos) return std::nullopt;
  return Halves{text.substr(0, place), text.substr(place + 1)};
}

std::optional<std::int32_t> parseInt32(std::string_view text) {
  return parseWhole<std::int32_t>(text);
}

std::optional<std::int64_t> parseInt64(std::string_view text) {
  return parseWhole<std::int64_t>(text);
}

std::optional<float> parseFloat(std::string_view text) {
  const auto number = parseWhole<float>(text);
  if (!number) return std::nullopt;
  // The library also reads other spellings of what is not a number; one each is enough.
  const bool special = text == "inf" || text == "-inf" || text == "nan";
  return special || std::isfinite(*number) ? number : std::nullopt;
}

std::optional<double> parseFinite(std::string_view text) {
  const auto number = parseWhole<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<VirtualTime> parseTime(std::string_view text) {
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const std::string_view decimals = point < text.size() ? text.substr(point + 1) : "0";
  if (whole.empty() || whole.size() > kMostWholeDigits || decimals.empty() ||
      decimals.size() > kMostDecimals || !std::all_of(whole.begin(), whole.end(), isDigit) ||
      !std::all_of(decimals.begin(), decimals.end(), isDigit)) {
    return std::nullopt;
  }
  VirtualTime::rep nanoseconds = 0;
  for (const char c : whole) nanoseconds = nanoseconds * 10 + (c - '0');
  for (std::size_t i = 0; i < kMostDecimals; ++i) {
    nanoseconds = nanoseconds * 10 + (i < decimals.size() ? decimals[i] - '0' : 0);
  }
  return VirtualTime(nanoseconds);
}

std::optional<bool> parseEither(std::string_view text, std::string_view yes, std::string_view no) {
  if (text == yes) return true;
  if (text == no) return false;
  return std::nullopt;
}

}  // namespace velotap::lab
