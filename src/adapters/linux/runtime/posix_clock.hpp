// Time on Linux: the monotonic clock, which stands still while the system sleeps.
#pragma once

#include "platform/clock.hpp"

namespace velotap {

class PosixClock final : public Clock {
 public:
  [[nodiscard]] double uptime() const noexcept override;
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override;
};

}  // namespace velotap
