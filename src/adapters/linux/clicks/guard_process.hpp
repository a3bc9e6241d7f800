// What the guard of a grabbed device does, in a process of its own.
//
// It begins as a copy of one thread of a process with several, whose locks may be held by threads
// that were not copied. So it calls the system, by functions that are safe in a signal handler, and
// nothing else: no memory is asked for, nothing is printed, and it leaves by `_exit`, which runs
// none of the farewells that libraries have registered. A test holds the object file to that.
#pragma once

#include <atomic>
#include <cstdint>

namespace velotap {

/// Open files, all of them the program's own.
struct WatchedFiles {
  int node = -1;     ///< grabbed
  int mirror = -1;   ///< of uinput
  int pointer = -1;  ///< of uinput: its middle button may be down; -1 for none
};

/// `served` counts what the program has served, in memory that both processes share. Something to
/// read at `lifeline`, or its end, means that the guard is no longer needed.
[[noreturn]] void guardProcess(const WatchedFiles& watched,
                               const std::atomic<std::uint64_t>& served, int lifeline);

}  // namespace velotap
