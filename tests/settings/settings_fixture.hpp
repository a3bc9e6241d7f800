// Settings in memory and texts in any language, for the tests of the settings window.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "adapters/simulated/simulated_log.hpp"
#include "adapters/simulated/simulated_preferences.hpp"
#include "config/config.hpp"
#include "config/defaults_store.hpp"
#include "localization/texts.hpp"

namespace velotap::test {

/// Sentences of one language in the notation of one region; universal time.
inline Texts textsIn(const std::string& language, const std::string& locale) {
  const std::vector<std::string> preferred = {language};
  return {Localization::shared().bundle(preferred), RegionalFormat(locale)};
}
inline Texts textsIn(const std::string& language) {
  return textsIn(language, language);
}
inline Texts english() {
  return textsIn("en", "en_US");
}

struct StoredSettings {
  SimulatedPreferences storage;
  SimulatedLog log;
  NotificationCenter notifications;
  DefaultsStore defaults{storage, log};
  Config config{defaults, notifications};
};

}  // namespace velotap::test
