// Reads UTF-8 strictly: nothing overlong, no surrogates, nothing beyond Unicode, nothing cut off.
//
// Pure; any thread; only `repairedUtf8` allocates.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace velotap {

struct Utf8Character {
  char32_t code = 0;
  std::size_t length = 0;  ///< in bytes, 1 to 4
};

/// The character that starts at byte `start`, which must be inside the text; nothing when the bytes
/// there are not one.
[[nodiscard]] std::optional<Utf8Character> utf8CharacterAt(std::string_view text,
                                                           std::size_t start) noexcept;

/// Is every byte part of a character? The empty text qualifies.
[[nodiscard]] bool isUtf8(std::string_view text) noexcept;

/// The text with U+FFFD in place of whatever is not UTF-8: one for each beginning of a character
/// that does not go on, and one for each byte that begins none.
[[nodiscard]] std::string repairedUtf8(std::string_view text);

}  // namespace velotap
