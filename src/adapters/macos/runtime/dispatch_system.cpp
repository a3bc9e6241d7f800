#include "adapters/macos/runtime/dispatch_main_queue.hpp"

namespace velotap {

const DispatchApi& DispatchApi::system() {
  static const DispatchApi api = {
      // Inline, and typed as the main queue, which a pointer to a function must not be.
      .dispatch_get_main_queue = []() -> dispatch_queue_t { return ::dispatch_get_main_queue(); },
      .dispatch_time = &::dispatch_time,
      .dispatch_async_f = &::dispatch_async_f,
      .dispatch_after_f = &::dispatch_after_f,
  };
  return api;
}

}  // namespace velotap
