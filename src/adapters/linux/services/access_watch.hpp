// Tells that the rights to the device nodes may have changed: a rule was put in force, the session
// came to the screen or left it, a device appeared.
//
// A device that appears gets its rights in several steps; it is told once they have settled. Main
// thread. Costs nothing while nothing happens.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "base/observer_list.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class AccessWatch {
 public:
  static constexpr double kSettlingSeconds = 0.2;

  /// `devices` is where the nodes are: "/dev".
  AccessWatch(DescriptorLoop& loop, MainQueue& queue, std::string devices = "/dev");
  ~AccessWatch();
  AccessWatch(const AccessWatch&) = delete;
  AccessWatch& operator=(const AccessWatch&) = delete;

  /// False on a system that watches no folders.
  [[nodiscard]] bool works() const noexcept { return works_; }
  [[nodiscard]] Observation observe(std::function<void()> mayHaveChanged);

 private:
  void watchInputFolder();
  void readEvents();
  void settle();

  MainQueue& queue_;
  const std::string devices_;
  Descriptor inotify_;
  int outer_ = -1;
  int inner_ = -1;
  bool works_ = false;
  std::shared_ptr<DelayedWork> settling_;
  ObserverList<> changes_;
  Observation readable_;
};

}  // namespace velotap
