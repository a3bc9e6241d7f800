// The terminal side of the program on Linux, the same for both of its executables.
#pragma once

#include <optional>

#include "app/command_line.hpp"

namespace velotap {

/// The exit status, if the arguments ask for diagnostics, for help or for the version. Diagnostics
/// come first, and those that watch never return.
[[nodiscard]] std::optional<int> answerInTerminal(int argc, char** argv, const CommandLine& line);

}  // namespace velotap
