#include "adapters/linux/notices/linux_notices.hpp"

#include <utility>

namespace velotap {

LinuxNotices::LinuxNotices(DescriptorLoop& loop, MainQueue& queue, SessionEnvironment session,
                           std::string systemBusAddress)
    : loop_(loop),
      queue_(queue),
      session_(std::move(session)),
      systemBusAddress_(std::move(systemBusAddress)),
      devices_(loop) {}

SystemNotices::DeviceWatch LinuxNotices::watchDevices(std::function<void()> attached,
                                                      std::function<void()> detached) {
  return devices_.watchDevices(std::move(attached), std::move(detached));
}

Observation LinuxNotices::watchSleep(std::function<void()> willSleep,
                                     std::function<void()> didWake) {
  if (sleep_ == nullptr) sleep_ = std::make_unique<SleepNotices>(loop_, queue_, systemBusAddress_);
  return sleep_->observe(std::move(willSleep), std::move(didWake));
}

Observation LinuxNotices::watchDisplays(std::function<void()> reconfigured) {
  Observation observation = displayChanges_.add(std::move(reconfigured));
  if (displays_ == nullptr) {
    displays_ = velotap::watchDisplays(loop_, session_, [this] { displayChanges_.notify(); });
  }
  return observation;
}

}  // namespace velotap
