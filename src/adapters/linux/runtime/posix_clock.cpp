#include "adapters/linux/runtime/posix_clock.hpp"

#include <ctime>

namespace velotap {

double PosixClock::uptime() const noexcept {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

std::chrono::system_clock::time_point PosixClock::date() const noexcept {
  return std::chrono::system_clock::now();
}

}  // namespace velotap
