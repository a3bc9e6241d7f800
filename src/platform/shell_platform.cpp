#include "platform/shell_platform.hpp"

#include <cstdio>
#include <cstdlib>

namespace velotap {
namespace {
ShellPlatform* currentPlatform = nullptr;
}

ShellPlatform& ShellPlatform::current() {
  if (currentPlatform == nullptr) {
    std::fputs("velotap: a service was used before the shell platform was set\n", stderr);
    std::abort();
  }
  return *currentPlatform;
}

void ShellPlatform::setCurrent(ShellPlatform& platform) {
  currentPlatform = &platform;
}

}  // namespace velotap
