#include "adapters/macos/runtime/autorelease_pool.hpp"

// Part of the runtime's interface for compilers, which no header declares.
extern "C" void* objc_autoreleasePoolPush(void);
extern "C" void objc_autoreleasePoolPop(void* pool);

namespace velotap {

const ObjectiveCApi& ObjectiveCApi::system() {
  static const ObjectiveCApi api = {
      .objc_autoreleasePoolPush = &::objc_autoreleasePoolPush,
      .objc_autoreleasePoolPop = &::objc_autoreleasePoolPop,
  };
  return api;
}

}  // namespace velotap
