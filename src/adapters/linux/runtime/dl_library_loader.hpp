// Opens libraries with the dynamic linker, and knows where the multitouch provider is.
#pragma once

#include <string>

#include "platform/library_loader.hpp"

namespace velotap {

class DlLibraryLoader final : public LibraryLoader {
 public:
  /// "VELOTAP_MULTITOUCH_LIBRARY" names another provider; else the one beside the program, in a
  /// build tree as in an installation.
  DlLibraryLoader();
  [[nodiscard]] void* open(const char* path) override;
  [[nodiscard]] void* symbol(void* handle, const char* name) override;
  [[nodiscard]] const char* multitouchLibraryPath() const override { return path_.c_str(); }

 private:
  std::string path_;
};

/// Where the provider is for a program at this path: `../lib/` beside its folder if it is there,
/// else the name alone, which the dynamic linker searches for.
[[nodiscard]] std::string providerBeside(const std::string& executable);

}  // namespace velotap
