// The program's identity once had a capital letter; preferences stored under it are merged once.
//
// Main thread, before anything reads a setting.
#pragma once

#include <string_view>

#include "platform/preferences_storage.hpp"

namespace velotap {

struct AppIdentity {
  static constexpr std::string_view kCurrentDomain = "app.norwend.velotap";
  static constexpr std::string_view kLegacyDomain = "app.norwend.Velotap";

  /// Lays the current domain over the legacy one and stores the result as the current one, with a
  /// marker that keeps this from happening again. The legacy domain is left as it is. A write that
  /// fails is tried again at the next launch.
  static void migratePreferences(PreferencesStorage& storage,
                                 std::string_view currentDomain = kCurrentDomain,
                                 std::string_view legacyDomain = kLegacyDomain);
};

}  // namespace velotap
