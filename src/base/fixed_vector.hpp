// A vector with its storage inside the object: never allocates, refuses what does not fit.
//
// Not thread-safe. Elements are plain data, copied as bytes and dropped by forgetting them, and
// room for elements that are not there is never initialised: a frame builds one of these on the
// stack, and clearing sixteen fingers would cost more than recognising three.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

namespace velotap {

template <typename T, std::size_t Capacity>
class FixedVector {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  FixedVector() noexcept {}  // NOLINT: the storage stays uninitialised on purpose
  FixedVector(const FixedVector& other) noexcept { assign(other); }
  FixedVector& operator=(const FixedVector& other) noexcept {
    if (this != &other) assign(other);
    return *this;
  }
  ~FixedVector() = default;

  /// Appends; false, and nothing changes, when the vector is full.
  bool push(const T& value) noexcept {
    if (size_ == Capacity) return false;
    std::construct_at(at(size_++), value);
    return true;
  }
  void clear() noexcept { size_ = 0; }
  /// Removes the element at `index` and closes the gap, keeping the order.
  void erase(std::size_t index) noexcept {
    for (std::size_t i = index + 1; i < size_; ++i) (*this)[i - 1] = (*this)[i];
    --size_;
  }
  [[nodiscard]] std::size_t size() const noexcept { return size_; }
  [[nodiscard]] bool empty() const noexcept { return size_ == 0; }
  [[nodiscard]] bool full() const noexcept { return size_ == Capacity; }
  [[nodiscard]] static constexpr std::size_t capacity() noexcept { return Capacity; }
  T& operator[](std::size_t i) noexcept { return *at(i); }
  const T& operator[](std::size_t i) const noexcept { return *at(i); }
  T* begin() noexcept { return at(0); }
  T* end() noexcept { return at(size_); }
  const T* begin() const noexcept { return at(0); }
  const T* end() const noexcept { return at(size_); }

 private:
  T* at(std::size_t i) noexcept { return std::launder(reinterpret_cast<T*>(storage_)) + i; }
  const T* at(std::size_t i) const noexcept {
    return std::launder(reinterpret_cast<const T*>(storage_)) + i;
  }
  void assign(const FixedVector& other) noexcept {
    size_ = 0;
    for (const T& value : other) push(value);
  }

  alignas(T) std::byte storage_[sizeof(T) * Capacity];
  std::size_t size_ = 0;
};

}  // namespace velotap
