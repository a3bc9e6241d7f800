#include "adapters/macos/runtime/mach_clock.hpp"

namespace velotap {
namespace {

constexpr double kSecondsPerNanosecond = 1e-9;

double secondsPerTick(const MachTimeApi& time) {
  mach_timebase_info_data_t base{};
  // It cannot fail on a running kernel; a tick of a nanosecond, as on Intel, is what is left then.
  if (time.mach_timebase_info(&base) != 0 || base.denom == 0) return kSecondsPerNanosecond;
  return static_cast<double>(base.numer) / static_cast<double>(base.denom) * kSecondsPerNanosecond;
}

}  // namespace

MachClock::MachClock(const MachTimeApi& time)
    : time_(time), secondsPerTick_(secondsPerTick(time)) {}

double MachClock::uptime() const noexcept {
  return static_cast<double>(time_.mach_absolute_time()) * secondsPerTick_;
}

std::chrono::system_clock::time_point MachClock::date() const noexcept {
  return std::chrono::system_clock::now();
}

}  // namespace velotap
