// The small letter without marks of each letter that has one.
//
// Generated from the Unicode character database: case folding, then canonical decomposition without
// combining characters. Latin to U+024F and U+1E00 to U+1EFF, Greek, Cyrillic to U+052F.
#pragma once

namespace velotap {

/// The letter itself when there is nothing to fold. Sharp s is left to the caller: it folds into
/// two letters.
[[nodiscard]] char32_t foldedLetter(char32_t letter) noexcept;

}  // namespace velotap
