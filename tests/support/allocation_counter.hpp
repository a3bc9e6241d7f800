// Counts what the current thread allocates. Linking allocation_counter.cpp into a test program
// replaces its operator new.
#pragma once

#include <cstddef>

namespace velotap::test {

/// Allocations of this thread since it started.
[[nodiscard]] std::size_t allocationsOfThisThread() noexcept;

}  // namespace velotap::test
