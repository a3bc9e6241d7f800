// Reads a table of texts: lines of "key" = "text"; with comments.
//
// A file is taken whole or not at all: a broken one yields no texts but the line and the reason, so
// that a slip never shows as a few missing sentences. A key that two hands added is no such slip:
// its first text counts. Pure; any thread.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velotap {

using StringTable = std::map<std::string, std::string, std::less<>>;

struct StringsError {
  int line = 0;  ///< from 1
  std::string message;
};

struct StringsFile {
  StringTable texts;  ///< empty when there is an error
  std::optional<StringsError> error;
  std::vector<StringsError> repeated;  ///< keys that had a text already
};

/// UTF-8, with or without a byte order mark. Keys and texts are quoted; a key of letters, digits
/// and "._-" needs no quotes. Escapes: \" \\ \' \n \r \t \0 and \Uxxxx or \uxxxx, in pairs for what
/// lies beyond the first plane. Comments: /* … */ and // to the end of the line.
[[nodiscard]] StringsFile parseStrings(std::string_view source);

}  // namespace velotap
