#include "platform/platform.hpp"

#include <cstdio>
#include <cstdlib>

namespace velotap {
namespace {
Platform* currentPlatform = nullptr;
}

Platform& Platform::current() {
  if (currentPlatform == nullptr) {
    std::fputs("velotap: a service was used before the platform was set\n", stderr);
    std::abort();
  }
  return *currentPlatform;
}

void Platform::setCurrent(Platform& platform) {
  currentPlatform = &platform;
}

}  // namespace velotap
