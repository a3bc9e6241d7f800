// What a file holds, whatever stands at its place: nothing, a folder, a device, more than fits.
//
// Any thread.
#pragma once

#include <cstddef>
#include <string>

namespace velotap {

struct FileContent {
  enum class State { absent, present, unreadable, notAFile, tooLarge };
  State state = State::absent;
  std::string text;
  std::string error;  ///< why there is no text
};

/// At most `limit` bytes; a larger file is refused whole. Never waits, whatever kind of file it is.
[[nodiscard]] FileContent readFile(const std::string& path, std::size_t limit);

}  // namespace velotap
