// Which of the configured layouts KDE's keyboard is switched to, over the session's bus.
//
// Main thread. Asks whenever the keyboard service appears, then follows its signals. Says nothing
// where there is no such service, and connects again to a bus that went away.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "adapters/linux/bus/session_bus.hpp"
#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/session/reconnection.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class KdeLayoutGroup {
 public:
  /// `address` is the session bus's.
  KdeLayoutGroup(DescriptorLoop& loop, MainQueue& queue, std::string address,
                 std::function<void(std::uint32_t group)> changed);
  void start() { reconnection_.start(); }

 private:
  [[nodiscard]] bool connect();
  void disconnect();
  void follow(const std::string& owner);
  void ask(const std::string& owner);
  void tell(BusMessage message);

  DescriptorLoop& loop_;
  MainQueue& queue_;
  const std::string address_;
  const std::function<void(std::uint32_t)> changed_;
  std::optional<SessionBus> bus_;
  Observation layoutSignal_;
  Observation listSignal_;
  Reconnection reconnection_;
};

}  // namespace velotap
