// A queue of fixed size between any number of posting threads and one reading thread.
//
// Posting neither blocks nor allocates nor calls the system: it claims a cell with one atomic
// exchange loop and fills it. When the ring is full the item is refused. Items of one posting
// thread come out in its order. T must be trivially copyable; Size a power of two.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>

namespace velotap {

template <typename T, std::size_t Size>
class EventRing {
  static_assert(std::is_trivially_copyable_v<T>);
  static_assert(Size >= 2 && (Size & (Size - 1)) == 0);

 public:
  EventRing() {
    for (std::size_t i = 0; i < Size; ++i) cells_[i].turn.store(i, std::memory_order_relaxed);
  }

  /// Any thread. False, and nothing is kept, when the ring is full.
  [[nodiscard]] bool push(const T& item) noexcept {
    std::size_t position = tail_.load(std::memory_order_relaxed);
    while (true) {
      Cell& cell = cells_[position % Size];
      const std::size_t turn = cell.turn.load(std::memory_order_acquire);
      if (turn == position) {
        if (!tail_.compare_exchange_weak(position, position + 1, std::memory_order_relaxed)) {
          continue;
        }
        cell.item = item;
        cell.turn.store(position + 1, std::memory_order_release);
        return true;
      }
      // The cell still holds an item of the round before: full. Otherwise another thread has
      // claimed it meanwhile.
      if (static_cast<std::ptrdiff_t>(turn - position) < 0) return false;
      position = tail_.load(std::memory_order_relaxed);
    }
  }

  /// The reading thread alone. Nothing when the ring is empty.
  [[nodiscard]] std::optional<T> pop() noexcept {
    Cell& cell = cells_[head_ % Size];
    if (cell.turn.load(std::memory_order_acquire) != head_ + 1) return std::nullopt;
    const T item = cell.item;
    cell.turn.store(head_ + Size, std::memory_order_release);
    ++head_;
    return item;
  }

 private:
  struct Cell {
    std::atomic<std::size_t> turn;  ///< the position that may be filled, or that is filled plus 1
    T item;
  };
  std::array<Cell, Size> cells_;
  std::atomic<std::size_t> tail_ = 0;
  std::size_t head_ = 0;
};

}  // namespace velotap
