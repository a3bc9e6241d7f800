// The group that folds a pane's filters away, and how it says that some are in force.
//
// Pure; any thread. It opens by itself once, when the pane appears with a filter in force, and
// never closes by itself.
#pragma once

#include <string>
#include <string_view>

#include "localization/texts.hpp"

namespace velotap {

struct SettingsFilterDisclosure {
  std::string title;
  std::string_view symbol{};
  bool opensOnAppearing = false;
  bool showsReset = false;
  std::string resetTitle;
};

/// `activeCount`: how many filters are not at their neutral value.
[[nodiscard]] SettingsFilterDisclosure settingsFilterDisclosure(int activeCount,
                                                                const Texts& texts);

}  // namespace velotap
