// How values are written in diagnostic lines.
#pragma once

#include <string>
#include <vector>

#include "base/point.hpp"

namespace velotap {

/// Shortest decimal form that reads back as the same number, with at least one fractional digit:
/// 512 is "512.0". Not-a-number and infinities are "nan", "inf" and "-inf".
[[nodiscard]] std::string decimalText(double value);

/// "(512.0, 384.5)".
[[nodiscard]] std::string pointText(Point point);

/// ["first", "second"], with the quotation marks.
[[nodiscard]] std::string listText(const std::vector<std::string>& texts);

/// The printf form with this many fractional digits: fixedText(0.0524, 3) is "0.052".
[[nodiscard]] std::string fixedText(double value, int fractionDigits);

}  // namespace velotap
