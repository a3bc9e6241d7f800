#include "localization/system_regional_settings.hpp"

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace velotap {
namespace {

RegionalSettings*& sharedSystem() {
  static RegionalSettings* system = nullptr;
  return system;
}

}  // namespace

SystemRegionalSettings::SystemRegionalSettings(RegionalSettings& system,
                                               const Localization& localization)
    : system_(system), localization_(localization) {
  changes_ = system_.observeChanges([this] {
    ++revision_;
    observers_.notify();
  });
}

SystemRegionalSettings& SystemRegionalSettings::shared() {
  if (sharedSystem() == nullptr) {
    std::fputs("velotap: the regional settings were used before the platform was set\n", stderr);
    std::abort();
  }
  static SystemRegionalSettings instance(*sharedSystem(), Localization::shared());
  return instance;
}

void SystemRegionalSettings::setSystem(RegionalSettings& system) {
  sharedSystem() = &system;
}

Observation SystemRegionalSettings::observeRevision(std::function<void()> changed) {
  return observers_.add(std::move(changed));
}

std::string SystemRegionalSettings::language() const {
  return localization_.language(system_.preferredLanguages());
}

Texts SystemRegionalSettings::texts() const {
  const std::vector<std::string> preferred = system_.preferredLanguages();
  return {localization_.bundle(preferred),
          RegionalFormat(system_.locale(), [this](std::int64_t moment) {
            return system_.secondsFromUniversalTime(moment);
          })};
}

}  // namespace velotap
