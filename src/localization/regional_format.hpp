// How a region writes numbers, percentages, milliseconds, times and dates.
//
// Tables for the five languages of the program, with the regions that differ from their language.
// A locale of another language is written as English is. Pure values; any thread, as far as the
// offset function allows it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace velotap {

/// How one region differs from another in what it puts between and around the digits.
struct RegionalNotation {
  std::string_view decimal = ".";
  std::string_view group = ",";
  int groupFrom = 4;  ///< digits before the decimal sign from which they are grouped
  std::string_view percentGap{};
  std::string_view milliseconds = "\u00A0ms";
  bool twelveHours = false;
  std::string_view dateOrder = "d/m/y";  ///< letters d, m, y; upper case with a leading zero
};

class RegionalFormat {
 public:
  /// Seconds that the time zone adds to universal time at a moment.
  using Offset = std::function<std::int64_t(std::int64_t moment)>;

  /// `locale` such as "de_AT", "de-AT.UTF-8" or "bg". Without an offset times are universal.
  explicit RegionalFormat(std::string_view locale, Offset offset = nullptr);

  /// Grouped: "1,234".
  [[nodiscard]] std::string wholeNumber(std::int64_t value) const;
  /// Exactly that many digits after the decimal sign, halves to even as the platform has it.
  [[nodiscard]] std::string number(double value, int fractionDigits) const;
  /// Of a part of one, whole percent: 0.35 is "35%".
  [[nodiscard]] std::string percent(double part) const;
  [[nodiscard]] std::string milliseconds(std::int64_t value) const;
  /// With one digit and the multiplication sign: "1.0×".
  [[nodiscard]] std::string multiplier(double value) const;

  /// Moments are seconds since 1970.
  [[nodiscard]] std::string timeOfDay(std::int64_t moment) const;
  [[nodiscard]] std::string date(std::int64_t moment) const;
  [[nodiscard]] std::string dateAndTime(std::int64_t moment) const;
  /// Days since 1970 of the calendar on the wall.
  [[nodiscard]] std::int64_t calendarDay(std::int64_t moment) const;

  /// Does this count take the singular form?
  [[nodiscard]] static bool isSingular(std::string_view language, std::int64_t count);
  [[nodiscard]] const std::string& locale() const noexcept { return locale_; }

 private:
  [[nodiscard]] std::int64_t wallClock(std::int64_t moment) const;

  std::string locale_;
  RegionalNotation notation_;
  Offset offset_;
};

}  // namespace velotap
