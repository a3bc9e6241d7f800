// What the program's arguments ask for, besides diagnostics.
//
// Pure. An argument that nobody knows is no reason not to start: it is named, and ignored.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velotap {

struct CommandLine {
  bool help = false;
  bool version = false;
  bool background = false;  ///< without windows, whatever the display
  bool capture = false;     ///< pictures are asked for; the other program reads how
  std::vector<std::string_view> unknown;
};

/// The program's own path, the first argument, is skipped.
[[nodiscard]] CommandLine parseCommandLine(int argc, const char* const* argv);

[[nodiscard]] std::string helpText();
[[nodiscard]] std::string versionText();
/// One line for each argument that nobody knows: for standard error, as the program starts anyway.
[[nodiscard]] std::string unknownText(const CommandLine& line);

}  // namespace velotap
