// Whether this user's session is the one at the screen, and word of every change: somebody switched
// to another user or to a text console, and back.
//
// Touches belong to whoever sits there; a program of a session in the background must not read
// them, even where its user may. Main thread. Where nobody keeps book of sessions, every session
// counts as active.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "base/observer_list.hpp"

namespace velotap {

struct LoginFunctions;

class SessionActivity {
 public:
  explicit SessionActivity(DescriptorLoop& loop);
  /// Null functions: nobody keeps book. They outlive this.
  SessionActivity(DescriptorLoop& loop, const LoginFunctions* functions);
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
  Observation ready_;
};

}  // namespace velotap
