// Fills the arguments into a text: %@ for texts, %d (also %ld, %lld, %lu, %i) for whole numbers,
// %% for the sign itself. A number and a dollar sign choose an argument: "%2$@ of %1$@".
//
// Numbers that a person reads in her own notation are texts already, made by RegionalFormat. Pure;
// any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velotap {

using FormatArgument = std::variant<std::string, std::int64_t>;
using FormatArguments = std::vector<FormatArgument>;

enum class FormatType : std::uint8_t { text, integer };

struct FormatSpecifier {
  int argument = 0;  ///< from 1
  FormatType type = FormatType::text;
  friend bool operator==(const FormatSpecifier&, const FormatSpecifier&) = default;
};

/// Which arguments a text takes, by argument. Texts in different languages that mean the same have
/// the same.
[[nodiscard]] std::vector<FormatSpecifier> formatSpecifiers(std::string_view pattern);

/// A specifier without a matching argument, or one of another type, stays as it is written; what is
/// no specifier is text. Surplus arguments are ignored.
[[nodiscard]] std::string formatText(std::string_view pattern, const FormatArguments& arguments);

}  // namespace velotap
