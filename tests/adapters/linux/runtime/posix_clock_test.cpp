#include "adapters/linux/runtime/posix_clock.hpp"

#include <gtest/gtest.h>

#include <ctime>

namespace velotap {
namespace {

double monotonic() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

TEST(PosixClock, UptimeIsTheMonotonicClockInSeconds) {
  const PosixClock clock;
  const double before = monotonic();
  const double uptime = clock.uptime();
  EXPECT_GE(uptime, before);
  EXPECT_LE(uptime, monotonic());
}

TEST(PosixClock, DateIsTheWallClock) {
  const PosixClock clock;
  const auto before = std::chrono::system_clock::now();
  const auto date = clock.date();
  EXPECT_GE(date, before);
  EXPECT_LE(date, std::chrono::system_clock::now());
}

}  // namespace
}  // namespace velotap
