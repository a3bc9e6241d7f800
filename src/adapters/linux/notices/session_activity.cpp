#include "adapters/linux/notices/session_activity.hpp"

#include <unistd.h>

#include <cstdlib>
#include <utility>

#include "adapters/linux/notices/login_functions.hpp"

namespace velotap {

struct SessionActivity::Monitor {
  Monitor(const LoginFunctions& owner, sd_login_monitor* opened)
      : functions(owner), handle(opened) {}
  ~Monitor() { functions.endMonitor(handle); }
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;

  const LoginFunctions& functions;
  sd_login_monitor* handle;
};

SessionActivity::SessionActivity(DescriptorLoop& loop)
    : SessionActivity(loop, LoginFunctions::load()) {}

SessionActivity::SessionActivity(DescriptorLoop& loop, const LoginFunctions* functions)
    : functions_(functions) {
  if (functions_ == nullptr) return;
  sd_login_monitor* handle = nullptr;
  if (functions_->newMonitor("session", &handle) < 0) return;
  monitor_ = std::make_unique<Monitor>(*functions_, handle);
  ready_ = loop.watch(functions_->descriptorOf(handle), DescriptorLoop::Interest::readable, [this] {
    functions_->flush(monitor_->handle);
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
  if (functions_->pidSession(0, &name) < 0 && functions_->displaySession(::getuid(), &name) < 0) {
    return {};
  }
  std::string text = name;
  std::free(name);
  return text;
}

bool SessionActivity::active() const {
  if (functions_ == nullptr) return true;
  const std::string name = session();
  // Zero is no; an error means that nobody knows.
  return name.empty() || functions_->isActive(name.c_str()) != 0;
}

Observation SessionActivity::observe(std::function<void()> mayHaveChanged) {
  return changes_.add(std::move(mayHaveChanged));
}

}  // namespace velotap
