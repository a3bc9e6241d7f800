// Replacing a file so that whatever happens, somebody finds either the whole old or the whole new
// content: written beside it, synced, renamed over it, the folder synced.
//
// A link to a file is followed: the target is replaced, the link stays. Main thread.
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>

namespace velotap {

/// The system calls that can fail half-way; tests put failing ones in their place.
struct FileCalls {
  std::function<ssize_t(int, const void*, std::size_t)> write;
  std::function<int(int)> sync;
  std::function<int(const char*, const char*)> rename;
  /// The real ones.
  static FileCalls system();
};

/// Nothing on success, else what went wrong; the old file is then intact and nothing is left over.
[[nodiscard]] std::optional<std::string> replaceFile(const std::string& path,
                                                     const std::string& content,
                                                     const FileCalls& calls);

struct FileContent {
  enum class State { present, absent, unreadable, notAFile, tooLarge };
  State state = State::absent;
  std::string text;
  std::string error;
};

/// At most `limit` bytes; a larger file is refused whole.
[[nodiscard]] FileContent readFile(const std::string& path, std::size_t limit);

}  // namespace velotap
