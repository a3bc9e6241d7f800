// Where this build gets its updates from. Any thread.
#pragma once

#include <string>

#include "adapters/updates/feed_updates.hpp"

namespace velotap {

/// Feed and key as the build names them; both empty where it names none.
[[nodiscard]] UpdateSource configuredUpdateSource(std::string version);

}  // namespace velotap
