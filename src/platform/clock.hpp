// The port for time.
#pragma once

#include <chrono>

namespace velotap {

/// Any thread. Recognition and events use uptime only; wall-clock time is for what people read.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Seconds since the system started, never going back; stands still while the system sleeps.
  [[nodiscard]] virtual double uptime() const noexcept = 0;
  [[nodiscard]] virtual std::chrono::system_clock::time_point date() const noexcept = 0;
};

}  // namespace velotap
