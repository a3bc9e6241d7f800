// The small pieces of a scenario line: words, numbers, points, and where a comment begins.
//
// Pure; any thread. Numbers are exact: what does not fit, or has anything behind it, is refused.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "adapters/simulated/simulated_clock.hpp"

namespace velotap::lab {

/// Takes words off the front of a text, one after another.
class Words {
 public:
  explicit Words(std::string_view text) : rest_(text) { skipBlanks(); }
  [[nodiscard]] bool empty() const noexcept { return rest_.empty(); }
  /// Empty when there is none.
  std::string_view next();
  /// Everything that is left, without blanks around it.
  std::string_view rest();

 private:
  void skipBlanks();
  std::string_view rest_;
};

/// The line without its comment. A '#' begins one at the line's start or behind a blank, but with
/// `quotes` not inside double quotes.
[[nodiscard]] std::string_view withoutComment(std::string_view line, bool quotes);

/// Both halves of a text around the first `separator`; nothing when there is none.
struct Halves {
  std::string_view left;
  std::string_view right;
};
[[nodiscard]] std::optional<Halves> splitAt(std::string_view text, char separator);

[[nodiscard]] std::optional<std::int32_t> parseInt32(std::string_view text);
[[nodiscard]] std::optional<std::int64_t> parseInt64(std::string_view text);
/// A decimal number, "inf", "-inf" or "nan".
[[nodiscard]] std::optional<float> parseFloat(std::string_view text);
[[nodiscard]] std::optional<double> parseFinite(std::string_view text);
/// Seconds, with at most nine digits before the point and nine behind it.
[[nodiscard]] std::optional<VirtualTime> parseTime(std::string_view text);
/// True for the one word, false for the other.
[[nodiscard]] std::optional<bool> parseEither(std::string_view text, std::string_view yes,
                                              std::string_view no);

}  // namespace velotap::lab
