// UTF-16, in which the keyboard services give their characters, as UTF-8.
#pragma once

#include <span>
#include <string>

namespace velotap {

/// Nothing is lost but a half of a surrogate pair without its other half, which becomes U+FFFD.
[[nodiscard]] std::string utf8Of(std::span<const char16_t> units);

}  // namespace velotap
