#include "adapters/macos/runtime/mach_clock.hpp"

namespace velotap {

const MachTimeApi& MachTimeApi::system() {
  static const MachTimeApi api = {
      .mach_absolute_time = &::mach_absolute_time,
      .mach_timebase_info = &::mach_timebase_info,
  };
  return api;
}

}  // namespace velotap
