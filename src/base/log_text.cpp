#include "base/log_text.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace velotap {

std::string decimalText(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
  // The longest double in fixed form has 309 digits before the point, or 325 behind it.
  std::array<char, 400> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  std::string text(buffer.data(), end.ptr);
  if (text.find('.') == std::string::npos) text += ".0";
  return text;
}

std::string pointText(Point point) {
  return "(" + decimalText(point.x) + ", " + decimalText(point.y) + ")";
}

std::string listText(const std::vector<std::string>& texts) {
  std::string list = "[";
  for (const std::string& text : texts) {
    if (list.size() > 1) list += ", ";
    list += '"' + text + '"';
  }
  return list + "]";
}

std::string fixedText(double value, int fractionDigits) {
  std::array<char, 400> buffer;
  const int length = std::snprintf(buffer.data(), buffer.size(), "%.*f", fractionDigits, value);
  return std::string(buffer.data(), static_cast<std::size_t>(length));
}

}  // namespace velotap
