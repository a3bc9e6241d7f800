// Time that passes only when somebody moves it.
//
// Virtual time counts nanoseconds from the start of the simulation, in whole numbers, so that equal
// times are equal however they were reached: 2 s after 0.1 s is 2.1 s. One thread moves it; any may
// read it.
#pragma once

#include <atomic>
#include <chrono>

#include "platform/clock.hpp"

namespace velotap {

/// Since the simulation started.
using VirtualTime = std::chrono::nanoseconds;

/// Whole nanoseconds nearest to `seconds`; none for anything that is not positive, and a time that
/// never comes (but can still be added to) for what is too long to count.
[[nodiscard]] VirtualTime virtualTime(double seconds) noexcept;

class SimulatedClock final : public Clock {
 public:
  /// How long the simulated system was up when the simulation started, in seconds.
  static constexpr double kUptimeAtStart = 1000;
  /// The wall clock then: the first second of 2024, UTC.
  static constexpr std::chrono::system_clock::time_point kDateAtStart{
      std::chrono::seconds(1704067200)};

  [[nodiscard]] double uptime() const noexcept override;
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override;

  [[nodiscard]] VirtualTime now() const noexcept { return VirtualTime(now_.load()); }
  /// Time never goes back: an earlier time changes nothing.
  void advanceTo(VirtualTime time) noexcept;

 private:
  std::atomic<VirtualTime::rep> now_{0};
};

}  // namespace velotap
