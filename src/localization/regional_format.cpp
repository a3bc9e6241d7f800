#include "localization/regional_format.hpp"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <utility>

namespace velotap {
namespace {

constexpr std::string_view kHardSpace = "\u00A0";
constexpr std::string_view kNarrowHardSpace = "\u202F";
constexpr std::int64_t kDay = 86400;

struct Region {
  std::string_view locale;
  RegionalNotation notation;
};

// A language alone stands for all its regions that have no line of their own before it.
constexpr std::array kRegions = {
    Region{"en_US", {.twelveHours = true, .dateOrder = "m/d/y"}},
    Region{"en_CA", {.twelveHours = true, .dateOrder = "y-M-D"}},
    Region{"en_AU", {.twelveHours = true, .dateOrder = "d/m/y"}},
    Region{"en_GB", {.dateOrder = "D/M/y"}},
    Region{"en_IE", {.dateOrder = "d/m/y"}},
    Region{"en_IN", {.twelveHours = true, .dateOrder = "D/M/y"}},
    Region{"en_NZ", {.twelveHours = true, .dateOrder = "d/M/y"}},
    Region{"en_ZA", {.decimal = ",", .group = kHardSpace, .dateOrder = "y/M/D"}},
    Region{"en", {.twelveHours = true, .dateOrder = "m/d/y"}},
    Region{"bg",
           {.decimal = ",",
            .group = kHardSpace,
            .groupFrom = 5,
            .milliseconds = "\u00A0мс",
            .dateOrder = "d.M.y"}},
    Region{"de_CH", {.decimal = ".", .group = "\u2019", .percentGap = {}, .dateOrder = "D.M.y"}},
    Region{"de_LI", {.decimal = ".", .group = "\u2019", .percentGap = {}, .dateOrder = "D.M.y"}},
    Region{"de_AT",
           {.decimal = ",", .group = kHardSpace, .percentGap = kHardSpace, .dateOrder = "D.M.y"}},
    Region{"de", {.decimal = ",", .group = ".", .percentGap = kHardSpace, .dateOrder = "D.M.y"}},
    Region{"es_MX", {.groupFrom = 4, .dateOrder = "d/m/y"}},
    Region{"es_US", {.twelveHours = true, .dateOrder = "d/m/y"}},
    Region{"es_AR", {.decimal = ",", .group = ".", .percentGap = kHardSpace, .dateOrder = "d/m/y"}},
    Region{"es",
           {.decimal = ",",
            .group = ".",
            .groupFrom = 5,
            .percentGap = kHardSpace,
            .dateOrder = "d/m/y"}},
    Region{"fr_CH",
           {.decimal = ",",
            .group = kNarrowHardSpace,
            .percentGap = kNarrowHardSpace,
            .dateOrder = "D.M.y"}},
    Region{"fr_CA",
           {.decimal = ",", .group = kHardSpace, .percentGap = kHardSpace, .dateOrder = "y-M-D"}},
    Region{"fr",
           {.decimal = ",",
            .group = kNarrowHardSpace,
            .percentGap = kNarrowHardSpace,
            .dateOrder = "D/M/y"}},
};

// "de_AT" of "de-AT.UTF-8@euro"; scripts ("sr_Latn_RS") are passed over.
std::string canonicalLocale(std::string_view locale) {
  std::string result(locale.substr(0, locale.find_first_of(".@")));
  for (char& c : result) {
    if (c == '-') c = '_';
  }
  const auto first = result.find('_');
  const auto second = first == std::string::npos ? first : result.find('_', first + 1);
  if (second != std::string::npos && second - first == 5) result.erase(first, 5);
  return result;
}

RegionalNotation notationOf(std::string_view locale) {
  const std::string_view language = locale.substr(0, locale.find('_'));
  for (const Region& region : kRegions) {
    if (region.locale == locale || region.locale == language) return region.notation;
  }
  return notationOf("en");
}

std::string grouped(std::string_view digits, const RegionalNotation& notation) {
  if (static_cast<int>(digits.size()) < notation.groupFrom) return std::string(digits);
  std::string result;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) result += notation.group;
    result += digits[i];
  }
  return result;
}

std::string twoDigits(std::int64_t value) {
  return (value < 10 ? "0" : "") + std::to_string(value);
}

}  // namespace

RegionalFormat::RegionalFormat(std::string_view locale, Offset offset)
    : locale_(canonicalLocale(locale)),
      notation_(notationOf(locale_)),
      offset_(std::move(offset)) {}

std::string RegionalFormat::wholeNumber(std::int64_t value) const {
  return number(static_cast<double>(value), 0);
}

std::string RegionalFormat::number(double value, int fractionDigits) const {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-∞" : "∞";
  std::array<char, 512> buffer{};
  const int length =
      std::snprintf(buffer.data(), buffer.size(), "%.*f", fractionDigits, std::fabs(value));
  const std::string_view digits(buffer.data(), static_cast<std::size_t>(length));
  // The C library may have been given a locale of its own; the decimal sign is where it is.
  const std::size_t whole = digits.size() - (fractionDigits > 0 ? fractionDigits + 1U : 0U);
  std::string result = grouped(digits.substr(0, whole), notation_);
  if (fractionDigits > 0) {
    result += notation_.decimal;
    result += digits.substr(whole + 1);
  }
  const bool negative = value < 0 && digits.find_first_of("123456789") != std::string_view::npos;
  return negative ? "-" + result : result;
}

std::string RegionalFormat::percent(double part) const {
  // A product such as 0.35 · 100 may lie a hair beside its whole number; digits are cut at 1e-9.
  return number(std::round(part * 100 * 1e9) / 1e9, 0) + std::string(notation_.percentGap) + "%";
}

std::string RegionalFormat::milliseconds(std::int64_t value) const {
  return wholeNumber(value) + std::string(notation_.milliseconds);
}

std::string RegionalFormat::multiplier(double value) const {
  return number(value, 1) + "×";
}

std::int64_t RegionalFormat::wallClock(std::int64_t moment) const {
  return moment + (offset_ ? offset_(moment) : 0);
}

std::int64_t RegionalFormat::calendarDay(std::int64_t moment) const {
  const std::int64_t wall = wallClock(moment);
  return wall >= 0 ? wall / kDay : -((kDay - 1 - wall) / kDay);
}

std::string RegionalFormat::timeOfDay(std::int64_t moment) const {
  const std::int64_t second = wallClock(moment) - calendarDay(moment) * kDay;
  const std::int64_t hour = second / 3600;
  const std::string rest = ":" + twoDigits(second / 60 % 60) + ":" + twoDigits(second % 60);
  if (!notation_.twelveHours) return twoDigits(hour) + rest;
  const std::int64_t shown = hour % 12 == 0 ? 12 : hour % 12;
  return std::to_string(shown) + rest + "\u00A0" + (hour < 12 ? "AM" : "PM");
}

std::string RegionalFormat::date(std::int64_t moment) const {
  using std::chrono::days;
  const std::chrono::year_month_day day{
      std::chrono::sys_days{days{static_cast<days::rep>(calendarDay(moment))}}};
  const unsigned dayNumber{day.day()};
  const unsigned monthNumber{day.month()};
  std::string result;
  for (const char c : notation_.dateOrder) {
    switch (c) {
      case 'd':
        result += std::to_string(dayNumber);
        break;
      case 'D':
        result += twoDigits(dayNumber);
        break;
      case 'm':
        result += std::to_string(monthNumber);
        break;
      case 'M':
        result += twoDigits(monthNumber);
        break;
      case 'y':
        result += std::to_string(static_cast<int>(day.year()));
        break;
      default:
        result += c;
    }
  }
  return result + (locale_.substr(0, 2) == "bg" ? "\u00A0г." : "");
}

std::string RegionalFormat::dateAndTime(std::int64_t moment) const {
  return date(moment) + ", " + timeOfDay(moment);
}

bool RegionalFormat::isSingular(std::string_view language, std::int64_t count) {
  return count == 1 || (language.substr(0, 2) == "fr" && count == 0);
}

}  // namespace velotap
