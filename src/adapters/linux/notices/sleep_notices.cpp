#include "adapters/linux/notices/sleep_notices.hpp"

#include <memory>
#include <utility>

namespace velotap {
namespace {

constexpr const char* kLoginManager = "org.freedesktop.login1";
constexpr const char* kManagerObject = "/org/freedesktop/login1";
constexpr const char* kManagerInterface = "org.freedesktop.login1.Manager";
constexpr const char* kUsualAddress = "unix:path=/run/dbus/system_bus_socket";

}  // namespace

std::string SleepNotices::systemBusAddress(
    const std::function<const char*(const char* name)>& environment) {
  const char* const address = environment("DBUS_SYSTEM_BUS_ADDRESS");
  return address == nullptr || *address == '\0' ? kUsualAddress : address;
}

SleepNotices::SleepNotices(DescriptorLoop& loop, MainQueue& queue,
                           const std::string& systemBusAddress)
    : bus_(loop, queue, [this](const std::string&) { signals_.reset(); }) {
  if (bus_.refusalToOpen(systemBusAddress)) return;
  bus_.followOwner(kLoginManager, [this](const std::string& owner) { follow(owner); });
}

void SleepNotices::follow(const std::string& owner) {
  signals_.reset();
  if (owner.empty()) return;
  signals_ = bus_.onSignal({owner.c_str(), kManagerObject, kManagerInterface, "PrepareForSleep"},
                           [this](BusMessage message) {
                             const auto begins = message.boolean();
                             if (!begins) return;  // not what a login manager says
                             (*begins ? sleeps_ : wakes_).notify();
                           });
}

Observation SleepNotices::observe(std::function<void()> willSleep, std::function<void()> didWake) {
  auto both = std::make_shared<std::pair<Observation, Observation>>(
      sleeps_.add(std::move(willSleep)), wakes_.add(std::move(didWake)));
  return Observation([both] { *both = {}; });
}

}  // namespace velotap
