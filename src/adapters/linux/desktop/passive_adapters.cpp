#include "adapters/linux/desktop/passive_adapters.hpp"

#include <cstdio>

namespace velotap {
int PrintedAlerts::runModal(const AlertRequest& request) {
  std::fprintf(stderr, "velotap: %s\n%s\n", request.message.c_str(),
               request.informativeText.c_str());
  return 0;
}

void PrintedAlerts::openUrl(const std::string& url) {
  std::fprintf(stderr, "velotap: see %s\n", url.c_str());
}

}  // namespace velotap
