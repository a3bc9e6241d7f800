// Where the pointer is, as far as the session tells: the X server does, Wayland does not.
//
// Any thread. The answer is waited for at most a few milliseconds; a server that does not give one,
// or that died, is asked again after a while. Never ends the process.
#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include "base/point.hpp"
#include "platform/clock.hpp"

namespace velotap {

class PointerLocator {
 public:
  /// Connects at once where there is an X session, so that the first question is as quick as any.
  explicit PointerLocator(const Clock& clock);
  ~PointerLocator();
  PointerLocator(const PointerLocator&) = delete;
  PointerLocator& operator=(const PointerLocator&) = delete;

  [[nodiscard]] std::optional<Point> location();

 private:
  class Connection;
  void connect();

  const Clock& clock_;
  std::mutex lock_;
  std::unique_ptr<Connection> connection_;
  double retryAt_ = 0;
};

}  // namespace velotap
