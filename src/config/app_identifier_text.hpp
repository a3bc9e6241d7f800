// What an application identifier that a person or another program wrote must look like to be kept.
//
// Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velotap {

/// The identifier without white space and line ends around it; nothing when that leaves it empty,
/// when it is 256 bytes or longer, holds a control or format character, or is not UTF-8.
[[nodiscard]] std::optional<std::string> cleanAppIdentifier(std::string_view text);

}  // namespace velotap
