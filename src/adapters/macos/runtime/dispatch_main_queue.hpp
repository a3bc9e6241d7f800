// The main queue over the system's main dispatch queue, which the main run loop serves.
//
// Made on the main thread, whose queue it is from then on. Tasks that were submitted run whether or
// not this object still exists. Delays are measured in uptime: they stand still with the system.
#pragma once

#include <dispatch/dispatch.h>

#include <cstdint>
#include <thread>

#include "platform/main_queue.hpp"

namespace velotap {

struct DispatchApi {
  dispatch_queue_t (*dispatch_get_main_queue)();
  dispatch_time_t (*dispatch_time)(dispatch_time_t, std::int64_t);
  void (*dispatch_async_f)(dispatch_queue_t, void*, dispatch_function_t);
  void (*dispatch_after_f)(dispatch_time_t, dispatch_queue_t, void*, dispatch_function_t);

  /// The library of this system. Exists on a Mac only.
  [[nodiscard]] static const DispatchApi& system();
};

class DispatchMainQueue final : public MainQueue {
 public:
  explicit DispatchMainQueue(const DispatchApi& dispatch)
      : dispatch_(dispatch), mainThread_(std::this_thread::get_id()) {}

  void async(Task task) override;
  std::shared_ptr<DelayedWork> asyncAfter(double seconds, Task task) override;
  [[nodiscard]] bool isCurrent() const override {
    return std::this_thread::get_id() == mainThread_;
  }

 private:
  const DispatchApi& dispatch_;
  std::thread::id mainThread_;
};

}  // namespace velotap
