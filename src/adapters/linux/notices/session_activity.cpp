#include "adapters/linux/notices/session_activity.hpp"

#include <dlfcn.h>
#include <systemd/sd-login.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <utility>

namespace velotap {

// Loaded when it is needed, as the library of the bus is: it is the same one.
struct SessionActivity::Library {
  decltype(&::sd_pid_get_session) pidSession = nullptr;
  decltype(&::sd_uid_get_display) displaySession = nullptr;
  decltype(&::sd_session_is_active) isActive = nullptr;
  decltype(&::sd_login_monitor_new) newMonitor = nullptr;
  decltype(&::sd_login_monitor_unref) endMonitor = nullptr;
  decltype(&::sd_login_monitor_get_fd) descriptorOf = nullptr;
  decltype(&::sd_login_monitor_flush) flush = nullptr;

  template <typename Function>
  static bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
  }

  static std::optional<Library> loadAny() {
    for (const char* file : {"libsystemd.so.0", "libelogind.so.0"}) {
      // Never closed: what it allocated may be freed as late as the process ends.
      void* const opened = dlopen(file, RTLD_NOW | RTLD_LOCAL);
      if (opened == nullptr) continue;
      Library found;
      const bool whole = find(opened, "sd_pid_get_session", found.pidSession) &&
                         find(opened, "sd_uid_get_display", found.displaySession) &&
                         find(opened, "sd_session_is_active", found.isActive) &&
                         find(opened, "sd_login_monitor_new", found.newMonitor) &&
                         find(opened, "sd_login_monitor_unref", found.endMonitor) &&
                         find(opened, "sd_login_monitor_get_fd", found.descriptorOf) &&
                         find(opened, "sd_login_monitor_flush", found.flush);
      if (whole) return found;
    }
    return std::nullopt;
  }

  static const Library* load() {
    static const std::optional<Library> library = loadAny();
    return library ? &*library : nullptr;
  }
};

struct SessionActivity::Monitor {
  Monitor(const Library& owner, sd_login_monitor* opened) : library(owner), handle(opened) {}
  ~Monitor() { library.endMonitor(handle); }
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;

  const Library& library;
  sd_login_monitor* handle;
};

SessionActivity::SessionActivity(DescriptorLoop& loop) : library_(Library::load()) {
  if (library_ == nullptr) return;
  sd_login_monitor* handle = nullptr;
  if (library_->newMonitor("session", &handle) < 0) return;
  monitor_ = std::make_unique<Monitor>(*library_, handle);
  ready_ = loop.watch(library_->descriptorOf(handle), DescriptorLoop::Interest::readable, [this] {
    library_->flush(monitor_->handle);
    changes_.notify();
  });
}

SessionActivity::~SessionActivity() {
  ready_.reset();
}

// A program that the user's service manager started belongs to no session; the user's session at a
// display stands for it.
std::string SessionActivity::session() const {
  char* name = nullptr;
  if (library_->pidSession(0, &name) < 0 && library_->displaySession(::getuid(), &name) < 0) {
    return {};
  }
  const std::string text = name;
  std::free(name);
  return text;
}

bool SessionActivity::active() const {
  if (library_ == nullptr) return true;
  const std::string name = session();
  // Zero is no; an error means that nobody knows.
  return name.empty() || library_->isActive(name.c_str()) != 0;
}

Observation SessionActivity::observe(std::function<void()> mayHaveChanged) {
  return changes_.add(std::move(mayHaveChanged));
}

}  // namespace velotap
