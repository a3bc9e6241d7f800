// Plays a scenario to the program's own classes on a simulated desktop, and prints what a user or
// another program could observe.
//
// One replay at a time in a process; the calling thread plays all of the program's threads, in
// virtual time. Every replay makes everything anew, so nothing of one is left in the next.
//
// The program is launched at time 0, when the stage is set: with a multitouch library that is
// complete enough, it starts the tracker, the device watcher and, with permission, the listeners;
// without one it ends at once, as the application does, and the scenario goes on without it.
// Before a timed statement whatever falls due by then runs at its own time; what the statement
// submits to the main thread runs before the next one.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "lab/scenario.hpp"

namespace velotap::lab {

struct ReplayOptions {
  bool debug = false;                  ///< print the program's diagnostic lines too
  std::vector<WriteSetting> settings;  ///< laid over those of the stage
};

/// Takes one line of output, without its end.
using PrintLine = std::function<void(const std::string& line)>;

/// What the program did to the multitouch library that no program may, in words; empty for a good
/// one. Lines are printed as they happen.
[[nodiscard]] std::vector<std::string> replay(const Scenario& scenario,
                                              const ReplayOptions& options, const PrintLine& print);

}  // namespace velotap::lab
