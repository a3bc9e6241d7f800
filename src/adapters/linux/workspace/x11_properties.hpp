// Reads the values of X properties. What other programs put there is not to be trusted: every
// length and format is checked. Pure functions; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace velotap {

struct PropertyValue {
  bool answered = false;   ///< false when there was no such window to ask
  int format = 0;          ///< bits of one element: 8, 16 or 32; 0 when there is no such property
  std::string_view bytes;  ///< in the byte order of this machine
};

/// The first of 32-bit elements.
[[nodiscard]] std::optional<std::uint32_t> firstNumber(const PropertyValue& value);
[[nodiscard]] bool containsNumber(const PropertyValue& value, std::uint32_t number);
/// The text up to its first terminator, or to the end.
[[nodiscard]] std::string firstText(const PropertyValue& value);
/// The two halves of WM_CLASS; what is missing is empty.
[[nodiscard]] std::pair<std::string, std::string> instanceAndClass(const PropertyValue& value);

}  // namespace velotap
