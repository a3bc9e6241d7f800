// Sees to it that a grabbed device comes back to the desktop when this process no longer serves it.
//
// A stopped process would keep the grab, and with it a dead pointer and whatever button is down;
// none of its threads could do anything about it. So a child process holds the same open files
// while a grab lasts. It sleeps until events wait; when they wait for half a second unserved it
// releases the buttons, gives the device back and removes the mirror. It ends with this process, at
// once, whose open files it would otherwise keep alive.
//
// One thread, but for `served`.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>

#include "adapters/linux/runtime/descriptor.hpp"

namespace velotap {

class Guardian {
 public:
  /// Open files, all of them this process's own.
  struct Watched {
    int node = -1;     ///< grabbed
    int mirror = -1;   ///< of uinput
    int pointer = -1;  ///< of uinput: its middle button may be down; -1 for none
  };

  Guardian();
  ~Guardian();
  Guardian(const Guardian&) = delete;
  Guardian& operator=(const Guardian&) = delete;

  /// False when there can be none; the grab is then unguarded.
  bool start(const Watched& watched);
  void stop();
  void served() noexcept {
    if (served_ != nullptr) served_->fetch_add(1, std::memory_order_relaxed);
  }

 private:
  std::atomic<std::uint64_t>* served_ = nullptr;  // in memory that both processes share
  Descriptor lifeline_;                           // its end tells the child that it is over
  pid_t child_ = -1;
};

}  // namespace velotap
