#include "support/allocation_counter.hpp"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t allocations = 0;

void* allocate(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}

void* allocate(std::size_t size, std::align_val_t alignment) {
  ++allocations;
  const auto a = static_cast<std::size_t>(alignment);
  if (void* memory = std::aligned_alloc(a, (size + a - 1) / a * a)) return memory;
  throw std::bad_alloc();
}

}  // namespace

std::size_t velotap::test::allocationsOfThisThread() noexcept {
  return allocations;
}

// The array and nothrow forms call these.
void* operator new(std::size_t size) {
  return allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return allocate(size, alignment);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
  std::free(memory);
}
