// Small things that every program inside the bench's machine needs: a file descriptor that closes
// itself, and the monotonic clock as a number.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <ctime>
#include <utility>

namespace velotap::vm {

/// Owns a file descriptor. One thread.
class Descriptor {
 public:
  explicit Descriptor(int value = -1) noexcept : value_(value) {}
  Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (value_ >= 0) close(value_);
  }

  [[nodiscard]] int get() const noexcept { return value_; }
  explicit operator bool() const noexcept { return value_ >= 0; }

 private:
  int value_;
};

inline constexpr std::int64_t kNanosecondsPerMillisecond = 1'000'000;
inline constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

/// The clock that the kernel stamps input events with on request, in nanoseconds.
[[nodiscard]] inline std::int64_t monotonicNanoseconds() noexcept {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kNanosecondsPerSecond + now.tv_nsec;
}

[[nodiscard]] inline double secondsOf(std::int64_t nanoseconds) noexcept {
  return static_cast<double>(nanoseconds) / static_cast<double>(kNanosecondsPerSecond);
}

}  // namespace velotap::vm
