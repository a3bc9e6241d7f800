// Keeps one connection to a server of the session: makes it again when the server comes back.
//
// Main thread. The connection itself is its owner's; this only says when to try. A server that
// accepts a connection and drops it soon does not start the pauses afresh. Costs nothing while the
// connection stands, and next to nothing while nobody is there.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "adapters/linux/session/recovery_signal.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class Reconnection {
 public:
  /// `connect` makes the connection anew, whatever is left of an older one, and says whether it
  /// stands.
  Reconnection(std::unique_ptr<RecoverySignal> recovery, MainQueue& queue,
               std::function<bool()> connect);
  ~Reconnection();
  Reconnection(const Reconnection&) = delete;
  Reconnection& operator=(const Reconnection&) = delete;

  /// Tries now, and for as long as that fails whenever it might not.
  void start();
  /// The connection broke. Tries later, so that the connection itself may call this.
  void lost();

 private:
  void attempt();
  void wait();
  void scheduleRetry();

  const std::unique_ptr<RecoverySignal> recovery_;
  MainQueue& queue_;
  const std::function<bool()> connect_;
  bool watched_ = false;
  std::size_t pauses_ = 0;  ///< how many were made since a connection last settled
  std::shared_ptr<DelayedWork> retry_;
  std::shared_ptr<DelayedWork> settled_;
};

}  // namespace velotap
