#include "adapters/updates/configured_source.hpp"

#include <utility>

namespace velotap {

UpdateSource configuredUpdateSource(std::string version) {
  return {.feed = VELOTAP_UPDATE_FEED, .key = VELOTAP_UPDATE_KEY, .version = std::move(version)};
}

}  // namespace velotap
