// The person's languages and region over Foundation's locales and time zones. Main thread.
#pragma once

#include <memory>

#include "platform/regional_settings.hpp"

namespace velotap {

/// The settings of this system. Exists on a Mac only.
[[nodiscard]] std::unique_ptr<RegionalSettings> makeMacRegionalSettings();

}  // namespace velotap
