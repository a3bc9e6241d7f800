#include "adapters/linux/bus/sd_bus_library.hpp"

#include <dlfcn.h>

#include <optional>

namespace velotap {
namespace {

std::optional<SdBusLibrary> loadFrom(const char* file) {
  // Never closed: what it allocated may be freed as late as the process ends.
  void* const library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return std::nullopt;
  SdBusLibrary functions;
  bool whole = true;
#define VELOTAP_LOOK_UP(name)                                                         \
  functions.name = reinterpret_cast<decltype(functions.name)>(dlsym(library, #name)); \
  whole = whole && functions.name != nullptr;
  VELOTAP_SD_BUS_FUNCTIONS(VELOTAP_LOOK_UP)
#undef VELOTAP_LOOK_UP
  return whole ? std::optional(functions) : std::nullopt;
}

std::optional<SdBusLibrary> loadAny() {
  for (const char* file : {"libsystemd.so.0", "libelogind.so.0", "libbasu.so.0"}) {
    if (auto functions = loadFrom(file)) return functions;
  }
  return std::nullopt;
}

}  // namespace

const SdBusLibrary* SdBusLibrary::load() {
  static const std::optional<SdBusLibrary> library = loadAny();
  return library ? &*library : nullptr;
}

}  // namespace velotap
