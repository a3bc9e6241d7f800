// The clock over the kernel's uptime counter, which stands still while the system sleeps.
#pragma once

#include <mach/mach_time.h>

#include <cstdint>

#include "platform/clock.hpp"

namespace velotap {

struct MachTimeApi {
  std::uint64_t (*mach_absolute_time)();
  int (*mach_timebase_info)(mach_timebase_info_t);

  /// The kernel of this system. Exists on a Mac only.
  [[nodiscard]] static const MachTimeApi& system();
};

/// Any thread.
class MachClock final : public Clock {
 public:
  explicit MachClock(const MachTimeApi& time);
  [[nodiscard]] double uptime() const noexcept override;
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override;

 private:
  const MachTimeApi& time_;
  double secondsPerTick_;
};

}  // namespace velotap
