// Sees to it that a grabbed device comes back to the desktop when this process no longer serves it.
//
// A stopped process would keep the grab, and with it a dead pointer and whatever button is down;
// none of its threads could do anything about it. So a child process holds the same open files
// while a grab lasts. It sleeps until events wait; when they wait for half a second unserved it
// releases the buttons, gives the device back and removes the mirror. It ends with this process, at
// once, whose open files it would otherwise keep alive.
//
// The child is a fork of a process with several threads. Its code is apart, in `guardProcess`.
//
// One thread, but for `served`.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>

#include "adapters/linux/clicks/guard_process.hpp"
#include "adapters/linux/runtime/descriptor.hpp"

namespace velotap {

class Guardian {
 public:
  using Watched = WatchedFiles;

  Guardian();
  ~Guardian();
  Guardian(const Guardian&) = delete;
  Guardian& operator=(const Guardian&) = delete;

  /// The system's error number when there can be none, or 0.
  [[nodiscard]] int start(const Watched& watched);
  void stop();
  /// A descriptor that reports an error as soon as the child has ended, whatever ended it; -1 while
  /// none was started.
  [[nodiscard]] int lifeline() const noexcept { return lifeline_.get(); }
  void served() noexcept {
    if (served_ != nullptr) served_->fetch_add(1, std::memory_order_relaxed);
  }

 private:
  std::atomic<std::uint64_t>* served_ = nullptr;  // in memory that both processes share
  Descriptor lifeline_;                           // its end tells the child that it is over
  pid_t child_ = -1;
};

}  // namespace velotap
