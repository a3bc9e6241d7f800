#include "adapters/simulated/simulated_clock.hpp"

#include <cmath>

namespace velotap {
namespace {

constexpr double kNanosecondsPerSecond = 1e9;
// Half of what can be counted, so that two such times can be added.
constexpr VirtualTime kNever = VirtualTime::max() / 2;

}  // namespace

VirtualTime virtualTime(double seconds) noexcept {
  const double nanoseconds = seconds * kNanosecondsPerSecond;
  if (!(nanoseconds > 0)) return VirtualTime::zero();
  if (nanoseconds >= static_cast<double>(kNever.count())) return kNever;
  return VirtualTime(std::llround(nanoseconds));
}

double SimulatedClock::uptime() const noexcept {
  return kUptimeAtStart + static_cast<double>(now().count()) / kNanosecondsPerSecond;
}

std::chrono::system_clock::time_point SimulatedClock::date() const noexcept {
  return kDateAtStart + std::chrono::duration_cast<std::chrono::system_clock::duration>(now());
}

void SimulatedClock::advanceTo(VirtualTime time) noexcept {
  if (time > now()) now_ = time.count();
}

}  // namespace velotap
