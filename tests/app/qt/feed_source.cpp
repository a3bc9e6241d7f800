// Takes the place of what a build names: the feed and the key of updates_test.py.
#include <utility>

#include "adapters/updates/configured_source.hpp"

namespace velotap {

UpdateSource configuredUpdateSource(std::string version) {
  return {.feed = "https://updates.velotap.test/feed",
          .key = "A1TWwlKEkT2qZB8muIRRYpKMpBEqNoe4e4iKQofuB3g=",
          .version = std::move(version)};
}

}  // namespace velotap
