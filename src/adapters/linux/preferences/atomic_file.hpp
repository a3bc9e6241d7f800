// Replacing a file so that whatever happens, somebody finds either the whole old or the whole new
// content: written beside it, synced, renamed over it, the folder synced.
//
// A link to a file is followed: the target is replaced, the link stays. Main thread.
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velotap {

/// The system calls that can fail half-way; tests put failing ones in their place.
struct FileCalls {
  std::function<ssize_t(int, const void*, std::size_t)> write;
  std::function<int(int)> sync;
  std::function<int(const char*, const char*)> rename;
  /// The real ones.
  static FileCalls system();
};

/// The path, and where it leads when it is a symbolic link: every link on the way, and last the
/// file itself, which need not exist. Links that lead in a circle are followed for a while.
[[nodiscard]] std::vector<std::string> linkChain(const std::string& path);

/// Nothing on success, else what went wrong; the old file is then intact and nothing is left over.
/// A new file is for the user alone, an old one keeps its mode.
[[nodiscard]] std::optional<std::string> replaceFile(const std::string& path,
                                                     const std::string& content,
                                                     const FileCalls& calls);

/// Removes what processes that were killed in `replaceFile` left beside the file.
void removeLeftovers(const std::string& path);

/// Creates the folder and what is missing above it, for the user alone. Nothing on success, else
/// what went wrong.
[[nodiscard]] std::optional<std::string> createFolder(const std::string& path);

}  // namespace velotap
