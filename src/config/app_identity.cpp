#include "config/app_identity.hpp"

#include <string>

#include "config/settings_keys.hpp"

namespace velotap {

void AppIdentity::migratePreferences(PreferencesStorage& storage, std::string_view currentDomain,
                                     std::string_view legacyDomain) {
  const std::string markerKey(keys::kIdentityMigrationCompleted);
  const ValueMap current = storage.load(currentDomain);
  const auto marker = current.find(markerKey);
  // Only a boolean counts: whatever else stands there was not written by this function.
  if (marker != current.end() && marker->second == Value(true)) return;
  ValueMap merged = storage.load(legacyDomain);
  for (const auto& [key, value] : current) merged.insert_or_assign(key, value);
  merged.insert_or_assign(markerKey, true);
  storage.store(currentDomain, merged);
}

}  // namespace velotap
