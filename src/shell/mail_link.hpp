// Links that make the person's mail program write a letter.
//
// Pure; any thread.
#pragma once

#include <string>
#include <string_view>

namespace velotap {

/// Who answers questions about the program; a setting of the build.
[[nodiscard]] std::string_view supportAddress();

/// Every byte but letters, digits and "-._~" as "%XX".
[[nodiscard]] std::string percentEncoded(std::string_view text);

/// A "mailto:" link; an empty body is left out.
[[nodiscard]] std::string mailLink(std::string_view address, std::string_view subject,
                                   std::string_view body);

}  // namespace velotap
