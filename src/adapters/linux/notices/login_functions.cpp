#include "adapters/linux/notices/login_functions.hpp"

#include <dlfcn.h>

#include <optional>

namespace velotap {
namespace {

template <typename Function>
bool find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  return function != nullptr;
}

std::optional<LoginFunctions> loadFrom(const char* file) {
  // Never closed: what it allocated may be freed as late as the process ends.
  void* const library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return std::nullopt;
  LoginFunctions found;
  const bool whole = find(library, "sd_pid_get_session", found.pidSession) &&
                     find(library, "sd_uid_get_display", found.displaySession) &&
                     find(library, "sd_session_is_active", found.isActive) &&
                     find(library, "sd_login_monitor_new", found.newMonitor) &&
                     find(library, "sd_login_monitor_unref", found.endMonitor) &&
                     find(library, "sd_login_monitor_get_fd", found.descriptorOf) &&
                     find(library, "sd_login_monitor_flush", found.flush);
  return whole ? std::optional(found) : std::nullopt;
}

std::optional<LoginFunctions> loadAny() {
  for (const char* file : {"libsystemd.so.0", "libelogind.so.0"}) {
    if (auto functions = loadFrom(file)) return functions;
  }
  return std::nullopt;
}

}  // namespace

const LoginFunctions* LoginFunctions::load() {
  static const std::optional<LoginFunctions> functions = loadAny();
  return functions ? &*functions : nullptr;
}

}  // namespace velotap
