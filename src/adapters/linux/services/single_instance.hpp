// One Velotap for each user: a second one brings the first to the front, and ends.
//
// Who is first is decided by a lock in the user's runtime folder, which the kernel gives back
// however the first one ends. Being brought to the front goes over the session bus. Without a
// runtime folder everybody is first; without a bus the second one ends all the same. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "adapters/linux/bus/session_bus.hpp"
#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class SingleInstance {
 public:
  static constexpr const char* kBusName = "app.norwend.velotap";
  static constexpr const char* kObject = "/app/norwend/velotap";
  static constexpr double kAnswerSeconds = 2.0;

  /// Nothing when another one holds the lock of this folder.
  [[nodiscard]] static std::optional<SingleInstance> claim(const std::string& runtimeFolder);

  /// Asks the one that runs to come to the front, and waits for its answer, at most
  /// `kAnswerSeconds`. False when nobody answered. Serves a loop of its own.
  [[nodiscard]] static bool reopenOther(const std::string& sessionBusAddress);

  /// From now on calls `reopen` whenever somebody starts the program again, or the desktop
  /// activates it.
  void serve(DescriptorLoop& loop, MainQueue& queue, const std::string& sessionBusAddress,
             std::function<void()> reopen);

 private:
  explicit SingleInstance(Descriptor lock) : lock_(std::move(lock)) {}

  Descriptor lock_;  // invalid where there is no runtime folder
  std::unique_ptr<SessionBus> bus_;
};

}  // namespace velotap
