// Finding and ordering texts as people do: without regard to case and marks, numbers by value.
//
// Covers the Latin, Greek and Cyrillic letters that the five languages and their neighbours use;
// other characters are compared as they are. Bytes that are not UTF-8 are compared as they are too.
// Pure; any thread.
#pragma once

#include <compare>
#include <string>
#include <string_view>

namespace velotap {

/// Small letters without marks: "Éß" is "ess".
[[nodiscard]] std::u32string foldedForSearch(std::string_view text);

/// The empty query is found everywhere.
[[nodiscard]] bool containsText(std::string_view text, std::string_view query);

/// "File 9" before "file 10"; equivalent when nothing but case and marks differs.
[[nodiscard]] std::weak_ordering compareText(std::string_view left, std::string_view right);

/// Without white space and line ends on both sides.
[[nodiscard]] std::string_view trimmedText(std::string_view text);

}  // namespace velotap
