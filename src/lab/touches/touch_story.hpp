// Tells what became of each touch of a recording, in words: what it was, what was posted, and why
// it was refused.
//
// Runs the program's own services on a simulated desktop; reasons come from the same functions
// that the recogniser asks. One at a time in a process.
#pragma once

#include <string>
#include <vector>

#include "adapters/linux/recordings/play_recording.hpp"
#include "base/value.hpp"

namespace velotap::lab {

/// `settings` are laid over the factory settings.
[[nodiscard]] std::vector<std::string> tellTouches(const PlayedRecording& recording,
                                                   const ValueMap& settings);

}  // namespace velotap::lab
