// The Objective-C autorelease pool of one call.
//
// The library's touch threads have no pool of their own, so whatever the system autoreleases on
// them would live for ever. Every adapter call that may come from such a thread opens one; pools
// nest, so it costs nothing to be careful.
#pragma once

namespace velotap {

struct ObjectiveCApi {
  void* (*objc_autoreleasePoolPush)();
  void (*objc_autoreleasePoolPop)(void*);

  /// The runtime of this system. Exists on a Mac only.
  [[nodiscard]] static const ObjectiveCApi& system();
};

class AutoreleasePool {
 public:
  explicit AutoreleasePool(const ObjectiveCApi& runtime)
      : runtime_(runtime), pool_(runtime.objc_autoreleasePoolPush()) {}
  ~AutoreleasePool() { runtime_.objc_autoreleasePoolPop(pool_); }
  AutoreleasePool(const AutoreleasePool&) = delete;
  AutoreleasePool& operator=(const AutoreleasePool&) = delete;

 private:
  const ObjectiveCApi& runtime_;
  void* pool_;
};

}  // namespace velotap
