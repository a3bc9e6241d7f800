#include "settings/filter_disclosure.hpp"

namespace velotap {

SettingsFilterDisclosure settingsFilterDisclosure(int activeCount, const Texts& texts) {
  const bool active = activeCount >= 1;
  return {.title = active
                       ? texts("settings.filter.active", {texts.format().wholeNumber(activeCount)})
                       : texts("settings.filter"),
          .symbol = active ? "line.3.horizontal.decrease.circle.fill"
                           : "line.3.horizontal.decrease.circle",
          .opensOnAppearing = active,
          .showsReset = active,
          .resetTitle = texts("refine.reset.filters")};
}

}  // namespace velotap
