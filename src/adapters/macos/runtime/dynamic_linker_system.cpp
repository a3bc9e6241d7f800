#include "adapters/macos/runtime/mac_library_loader.hpp"

#include <dlfcn.h>

namespace velotap {

const DynamicLinkerApi& DynamicLinkerApi::system() {
  static const DynamicLinkerApi api = {
      .dlopen = &::dlopen,
      .dlsym = &::dlsym,
  };
  return api;
}

}  // namespace velotap
