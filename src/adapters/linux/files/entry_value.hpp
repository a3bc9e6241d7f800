// The escapes in the values of desktop entries, autostart entries among them.
//
// Pure; any thread. What a command line inside a value escapes once more is its reader's matter.
#pragma once

#include <string>
#include <string_view>

namespace velotap {

/// An unknown escape, and a backslash at the end, stand for themselves.
[[nodiscard]] std::string unescapedEntryValue(std::string_view value);

}  // namespace velotap
