// A clock that shows any time it is set to, the one between two nanoseconds and the one before
// included: for limits, where the simulated clock's whole nanoseconds are too coarse.
#pragma once

#include <atomic>
#include <chrono>

#include "platform/clock.hpp"

namespace velotap::test {

/// One thread sets it; any may read it.
class ExactClock final : public Clock {
 public:
  [[nodiscard]] double uptime() const noexcept override { return now_; }
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override {
    using namespace std::chrono;
    return system_clock::time_point(duration_cast<system_clock::duration>(duration<double>(now_)));
  }
  void set(double now) { now_ = now; }
  void advance(double seconds) { now_ = now_ + seconds; }

 private:
  // From zero, differences of small numbers of seconds are exact where a limit needs it.
  std::atomic<double> now_{0};
};

}  // namespace velotap::test
