// Shows how one text differs from another, line by line.
#pragma once

#include <string>
#include <string_view>

namespace velotap::test {

/// Every line of both texts: with "  " before those that are common, "- " before those that only
/// `expected` has and "+ " before those that only `actual` has. Empty when the texts are equal.
[[nodiscard]] std::string lineDiff(std::string_view expected, std::string_view actual);

}  // namespace velotap::test
