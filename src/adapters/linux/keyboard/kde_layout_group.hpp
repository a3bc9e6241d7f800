// Which of the configured layouts KDE's keyboard is switched to, over the session's bus.
//
// Main thread. Asks whenever the keyboard service appears, then follows its signals. Says nothing
// where there is no such service.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/workspace/session_bus.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class KdeLayoutGroup {
 public:
  KdeLayoutGroup(DescriptorLoop& loop, MainQueue& queue,
                 std::function<void(std::uint32_t group)> changed);
  /// `address` is the session bus's. False when nobody listens there.
  bool open(const std::string& address);

 private:
  void follow(const std::string& owner);
  void ask(const std::string& owner);
  void tell(BusMessage message);

  const std::function<void(std::uint32_t)> changed_;
  SessionBus bus_;
  Observation layoutSignal_;
  Observation listSignal_;
};

}  // namespace velotap
