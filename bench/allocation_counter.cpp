#include "allocation_counter.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::uint64_t> allocations{0};
}

// In a file of their own, so that no compiler sees one inlined without the other.
void* operator new(std::size_t size) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace velotap::bench {

std::uint64_t allocationCount() noexcept {
  return allocations.load(std::memory_order_relaxed);
}

}  // namespace velotap::bench
