#include "adapters/macos/runtime/dispatch_main_queue.hpp"

namespace velotap {

const DispatchApi& DispatchApi::system() {
  static const DispatchApi api = {
      .dispatch_get_main_queue = &::dispatch_get_main_queue,
      .dispatch_time = &::dispatch_time,
      .dispatch_async_f = &::dispatch_async_f,
      .dispatch_after_f = &::dispatch_after_f,
  };
  return api;
}

}  // namespace velotap
