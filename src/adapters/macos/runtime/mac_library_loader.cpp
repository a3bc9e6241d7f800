#include "adapters/macos/runtime/mac_library_loader.hpp"

#include <dlfcn.h>

namespace velotap {

void* MacLibraryLoader::open(const char* path) {
  return linker_.dlopen(path, RTLD_NOW);
}

void* MacLibraryLoader::symbol(void* handle, const char* name) {
  return linker_.dlsym(handle, name);
}

const char* MacLibraryLoader::multitouchLibraryPath() const {
  return "/System/Library/PrivateFrameworks/MultitouchSupport.framework/MultitouchSupport";
}

}  // namespace velotap
