// A virtual device that keeps what is written to it, and is refused or lost at a test's command.
//
// Safe from any thread. A test waits for what the output thread writes, however long that takes.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "adapters/linux/output/virtual_device.hpp"

namespace velotap {

class RecordingDevice final : public VirtualDevice {
 public:
  struct Frame {
    std::vector<input_event> events;
    std::thread::id thread;
    std::chrono::steady_clock::time_point time;
  };

  int open() override {
    const std::lock_guard guard(lock_);
    if (refusal_ == 0 && !exists_) ++creations_;
    exists_ = refusal_ == 0;
    return refusal_;
  }
  bool emit(std::span<const input_event> frame) override {
    const std::lock_guard guard(lock_);
    if (lost_) {
      exists_ = false;
      return false;
    }
    frames_.push_back({.events = {frame.begin(), frame.end()},
                       .thread = std::this_thread::get_id(),
                       .time = std::chrono::steady_clock::now()});
    written_.notify_all();
    return true;
  }
  void close() override {
    const std::lock_guard guard(lock_);
    exists_ = false;
    ++closings_;
  }

  void refuse(int error) {
    const std::lock_guard guard(lock_);
    refusal_ = error;
  }
  void lose(bool lost) {
    const std::lock_guard guard(lock_);
    lost_ = lost;
  }
  [[nodiscard]] std::vector<Frame> frames() const {
    const std::lock_guard guard(lock_);
    return frames_;
  }
  /// The frames, once there are at least `count`.
  [[nodiscard]] std::vector<Frame> awaitFrames(std::size_t count) {
    std::unique_lock guard(lock_);
    written_.wait(guard, [&] { return frames_.size() >= count; });
    return frames_;
  }
  [[nodiscard]] int creations() const {
    const std::lock_guard guard(lock_);
    return creations_;
  }
  [[nodiscard]] int closings() const {
    const std::lock_guard guard(lock_);
    return closings_;
  }

 private:
  mutable std::mutex lock_;
  std::condition_variable written_;
  std::vector<Frame> frames_;
  int refusal_ = 0;
  bool lost_ = false;
  bool exists_ = false;
  int creations_ = 0;
  int closings_ = 0;
};

/// "+274" for a press of code 274 in a frame of its own, "-274" for its release; else the events.
inline std::string spoken(const RecordingDevice::Frame& frame) {
  const auto& e = frame.events;
  if (e.size() == 2 && e[0].type == EV_KEY && e[1].type == EV_SYN && e[1].code == SYN_REPORT) {
    return (e[0].value != 0 ? "+" : "-") + std::to_string(e[0].code);
  }
  std::string text;
  for (const input_event& event : e) {
    text += "(" + std::to_string(event.type) + " " + std::to_string(event.code) + " " +
            std::to_string(event.value) + ")";
  }
  return text;
}

inline std::string spoken(const std::vector<RecordingDevice::Frame>& frames) {
  std::string text;
  for (const auto& frame : frames) text += (text.empty() ? "" : " ") + spoken(frame);
  return text;
}

}  // namespace velotap
