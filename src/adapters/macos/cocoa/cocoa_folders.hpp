// The person's folders. Exists on a Mac only.
#pragma once

#include <string>

namespace velotap {

/// Where programs keep what is theirs; may lie in a container. Empty when there is none.
[[nodiscard]] std::string applicationSupportFolder();

}  // namespace velotap
