// The port for opening a library by path and looking up functions by name.
#pragma once

namespace velotap {

/// Any thread. Handles stay open for the life of the process.
class LibraryLoader {
 public:
  virtual ~LibraryLoader() = default;
  /// Null when the library cannot be opened with all its symbols resolved.
  [[nodiscard]] virtual void* open(const char* path) = 0;
  /// Null when the library lacks the symbol. `handle` is never null.
  [[nodiscard]] virtual void* symbol(void* handle, const char* name) = 0;
  /// Where this platform keeps its multitouch library.
  [[nodiscard]] virtual const char* multitouchLibraryPath() const = 0;
};

}  // namespace velotap
