// Tells when the system is about to sleep and when it woke, as the login manager announces it.
//
// Main thread. Without a system bus or a login manager nothing is ever told; one that starts later,
// or starts anew, is heard. Sleep is not delayed: being told late costs a pause, not a wake.
#pragma once

#include <functional>
#include <string>

#include "adapters/linux/bus/session_bus.hpp"
#include "adapters/linux/descriptor_loop.hpp"
#include "base/observer_list.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class SleepNotices {
 public:
  /// Begins to listen at once.
  SleepNotices(DescriptorLoop& loop, MainQueue& queue, const std::string& systemBusAddress);

  [[nodiscard]] Observation observe(std::function<void()> willSleep, std::function<void()> didWake);

  /// Where the system bus is: what the environment says, else the usual place.
  [[nodiscard]] static std::string systemBusAddress(
      const std::function<const char*(const char* name)>& environment);

 private:
  void follow(const std::string& owner);

  ObserverList<> sleeps_;
  ObserverList<> wakes_;
  SessionBus bus_;
  Observation signals_;
};

}  // namespace velotap
