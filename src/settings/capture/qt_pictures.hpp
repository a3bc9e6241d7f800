// The pictures of the settings window, taken by a program that was asked for them.
//
// Before anything else the program does. They need neither a display nor a home: only the type that
// the program carries is used.
#pragma once

#include <optional>
#include <string>

namespace velotap {

/// The exit status, if the arguments ask for pictures. The version is the one that the window
/// shows.
[[nodiscard]] std::optional<int> takePicturesIfRequested(int argc, char** argv,
                                                         const std::string& version,
                                                         const std::string& build);

}  // namespace velotap
