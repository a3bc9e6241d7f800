#include "adapters/simulated/simulated_notices.hpp"

#include <memory>
#include <utility>

namespace velotap {
namespace {

// One observation that withdraws both.
Observation both(Observation first, Observation second) {
  auto pair =
      std::make_shared<std::pair<Observation, Observation>>(std::move(first), std::move(second));
  return Observation([pair] {
    pair->first.reset();
    pair->second.reset();
  });
}

}  // namespace

SystemNotices::DeviceWatch SimulatedNotices::watchDevices(std::function<void()> attached,
                                                          std::function<void()> detached) {
  DeviceWatch watch;
  watch.portFailed = failures_.port;
  if (failures_.port) return watch;
  watch.attachError = failures_.attach;
  watch.detachError = failures_.detach;
  watch.observation = both(failures_.attach ? Observation() : attached_.add(std::move(attached)),
                           failures_.detach ? Observation() : detached_.add(std::move(detached)));
  return watch;
}

Observation SimulatedNotices::watchSleep(std::function<void()> willSleep,
                                         std::function<void()> didWake) {
  return both(sleep_.add(std::move(willSleep)), wake_.add(std::move(didWake)));
}

Observation SimulatedNotices::watchDisplays(std::function<void()> reconfigured) {
  return displays_.add(std::move(reconfigured));
}

}  // namespace velotap
