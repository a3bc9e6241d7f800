// Whether this user's session is the one at the screen, and word of every change: somebody switched
// to another user or to a text console, and back.
//
// Touches belong to whoever sits there; a program of a session in the background must not read
// them, even where its user may. Main thread. The login manager knows; where there is none, or it
// knows nothing of this session, the console in front decides, and a session without a console of
// its own counts as active.
//
// The console is not asked beside a login manager: what names this session's console comes from the
// environment, which for a program of the user's service manager may be that of an earlier login.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/notices/console_watch.hpp"
#include "base/observer_list.hpp"

namespace velotap {

struct LoginFunctions;

class SessionActivity {
 public:
  /// `terminal` is the number of this session's virtual terminal; null or empty for none.
  SessionActivity(DescriptorLoop& loop, const char* terminal);
  /// Null functions: nobody keeps book. They outlive this.
  SessionActivity(DescriptorLoop& loop, const LoginFunctions* functions, const char* terminal,
                  const std::string& activeConsole = ConsoleWatch::kActivePath);
  ~SessionActivity();
  SessionActivity(const SessionActivity&) = delete;
  SessionActivity& operator=(const SessionActivity&) = delete;

  /// Asked of the login manager each time.
  [[nodiscard]] bool active() const;
  /// May tell when nothing changed.
  [[nodiscard]] Observation observe(std::function<void()> mayHaveChanged);

 private:
  struct Monitor;
  [[nodiscard]] std::string session() const;

  const LoginFunctions* functions_;
  std::unique_ptr<Monitor> monitor_;
  ObserverList<> changes_;
  ConsoleWatch console_;
  Observation ready_;
};

}  // namespace velotap
