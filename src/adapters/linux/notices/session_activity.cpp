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

SessionActivity::SessionActivity(DescriptorLoop& loop, const char* terminal)
    : SessionActivity(loop, LoginFunctions::load(), terminal) {}

SessionActivity::SessionActivity(DescriptorLoop& loop, const LoginFunctions* functions,
                                 const char* terminal, const std::string& activeConsole)
    : functions_(functions),
      console_(
          loop, terminal, [this] { changes_.notify(); }, activeConsole) {
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
  if (functions_ == nullptr) return console_.inFront();
  const std::string name = session();
  const int answer = name.empty() ? -1 : functions_->isActive(name.c_str());
  // An error means that the login manager does not know.
  return answer < 0 ? console_.inFront() : answer > 0;
}

Observation SessionActivity::observe(std::function<void()> mayHaveChanged) {
  return changes_.add(std::move(mayHaveChanged));
}

}  // namespace velotap
