#include "adapters/linux/runtime/dl_library_loader.hpp"

#include <dlfcn.h>

#include <array>
#include <cstdlib>
#include <filesystem>

namespace velotap {
namespace {

constexpr const char* kProviderName = "libvelotap-multitouch.so";

// Debian keeps private libraries of one program in a folder of its own.
constexpr std::array kPlaces = {"../lib", "../lib/velotap"};

}  // namespace

std::string providerBeside(const std::string& executable) {
  const std::filesystem::path folder = std::filesystem::path(executable).parent_path();
  for (const char* place : kPlaces) {
    std::error_code failed;
    const std::filesystem::path candidate = folder / place / kProviderName;
    if (std::filesystem::exists(candidate, failed)) return candidate.lexically_normal();
  }
  return kProviderName;
}

DlLibraryLoader::DlLibraryLoader() {
  // An empty path would open the program itself.
  const char* named = std::getenv("VELOTAP_MULTITOUCH_LIBRARY");
  if (named != nullptr && *named != '\0') {
    path_ = named;
    return;
  }
  std::error_code failed;
  path_ = providerBeside(std::filesystem::read_symlink("/proc/self/exe", failed).string());
}

void* DlLibraryLoader::open(const char* path) {
  return ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
}

void* DlLibraryLoader::symbol(void* handle, const char* name) {
  return ::dlsym(handle, name);
}

}  // namespace velotap
