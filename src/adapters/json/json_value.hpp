// Settings values as JSON text and back, with their types kept: 1 is an integer, 1.0 a real.
//
// Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/value.hpp"

namespace velotap {

/// The dictionary that the text holds, or nothing with the reason in `error`. JSON null stands for
/// no value, so nulls are left out. What nests more than 64 deep is refused whole.
[[nodiscard]] std::optional<ValueMap> parseSettings(std::string_view json, std::string& error);

/// The one value that the text holds, or nothing with the reason in `error`. A null is no value.
[[nodiscard]] std::optional<Value> parseValue(std::string_view json, std::string& error);

/// Indented text with sorted keys and a final line end; nothing, with the reason in `error`, when a
/// number is not finite or a text is not UTF-8: JSON can hold neither.
[[nodiscard]] std::optional<std::string> settingsText(const ValueMap& values, std::string& error);

}  // namespace velotap
