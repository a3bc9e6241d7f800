// Counts heap allocations of the whole process, by replacing the global allocation functions.
#pragma once

#include <cstdint>

namespace velotap::bench {

/// Allocations since the process started. Any thread.
[[nodiscard]] std::uint64_t allocationCount() noexcept;

}  // namespace velotap::bench
