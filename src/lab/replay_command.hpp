// `velotap-lab replay`: its arguments, the files, and the exit status.
//
// Every file is read before any is replayed, so one that is malformed means that none is.
#pragma once

#include <iosfwd>
#include <string_view>
#include <vector>

namespace velotap::lab {

inline constexpr int kExitGood = 0;
inline constexpr int kExitFailed = 1;  ///< the program misbehaved, or the output was lost
inline constexpr int kExitUsage = 2;   ///< bad arguments, or a file that is no scenario

[[nodiscard]] std::string_view replayHelp();

/// `arguments` are those behind the sub-command.
int runReplayCommand(const std::vector<std::string_view>& arguments, std::ostream& out,
                     std::ostream& errors);

}  // namespace velotap::lab
