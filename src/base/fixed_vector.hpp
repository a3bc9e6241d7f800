// A vector with its storage inside the object: never allocates, refuses what does not fit.
//
// Not thread-safe. T must be trivially destructible, because elements are dropped by forgetting
// them.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

namespace velotap {

template <typename T, std::size_t Capacity>
class FixedVector {
  static_assert(std::is_trivially_destructible_v<T>);

 public:
  /// Appends; false, and nothing changes, when the vector is full.
  constexpr bool push(const T& value) noexcept {
    if (size_ == Capacity) return false;
    items_[size_++] = value;
    return true;
  }
  constexpr void clear() noexcept { size_ = 0; }
  /// Removes the element at `index` and closes the gap, keeping the order.
  constexpr void erase(std::size_t index) noexcept {
    for (std::size_t i = index + 1; i < size_; ++i) items_[i - 1] = items_[i];
    --size_;
  }
  [[nodiscard]] constexpr std::size_t size() const noexcept { return size_; }
  [[nodiscard]] constexpr bool empty() const noexcept { return size_ == 0; }
  [[nodiscard]] constexpr bool full() const noexcept { return size_ == Capacity; }
  [[nodiscard]] static constexpr std::size_t capacity() noexcept { return Capacity; }
  constexpr T& operator[](std::size_t i) noexcept { return items_[i]; }
  constexpr const T& operator[](std::size_t i) const noexcept { return items_[i]; }
  constexpr T* begin() noexcept { return items_.data(); }
  constexpr T* end() noexcept { return items_.data() + size_; }
  constexpr const T* begin() const noexcept { return items_.data(); }
  constexpr const T* end() const noexcept { return items_.data() + size_; }

 private:
  // Deliberately not value-initialised: a frame builds one of these on the stack, and clearing
  // sixteen fingers would cost more than recognising three.
  std::array<T, Capacity> items_;
  std::size_t size_ = 0;
};

}  // namespace velotap
