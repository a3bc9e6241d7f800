// Libraries over the dynamic linker. The multitouch library is a private framework of the system:
// it is opened by its path, whose file need not exist (system libraries live in a shared cache),
// and everything in it may be missing.
#pragma once

#include "platform/library_loader.hpp"

namespace velotap {

struct DynamicLinkerApi {
  void* (*dlopen)(const char*, int);
  void* (*dlsym)(void*, const char*);

  /// The linker of this system. Exists on a Mac only.
  [[nodiscard]] static const DynamicLinkerApi& system();
};

class MacLibraryLoader final : public LibraryLoader {
 public:
  explicit MacLibraryLoader(const DynamicLinkerApi& linker) : linker_(linker) {}

  [[nodiscard]] void* open(const char* path) override;
  /// Looks in what the library depends on as well, which is where the collection functions are.
  [[nodiscard]] void* symbol(void* handle, const char* name) override;
  [[nodiscard]] const char* multitouchLibraryPath() const override;

 private:
  const DynamicLinkerApi& linker_;
};

}  // namespace velotap
