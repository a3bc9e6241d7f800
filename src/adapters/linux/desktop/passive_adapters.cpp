#include "adapters/linux/desktop/passive_adapters.hpp"

#include <cstdio>

namespace velotap {
namespace {

class PassiveTap final : public InstalledTap {
 public:
  void enable(bool on) override { enabled_ = on; }
  [[nodiscard]] bool enabled() const override { return enabled_; }

 private:
  bool enabled_ = false;
};

}  // namespace

std::unique_ptr<InstalledTap> PassiveEventTaps::install(TapLocation, std::uint64_t, Callbacks) {
  return std::make_unique<PassiveTap>();
}

int PrintedAlerts::runModal(const AlertRequest& request) {
  std::fprintf(stderr, "velotap: %s\n%s\n", request.message.c_str(),
               request.informativeText.c_str());
  return 0;
}

void PrintedAlerts::openUrl(const std::string& url) {
  std::fprintf(stderr, "velotap: see %s\n", url.c_str());
}

}  // namespace velotap
