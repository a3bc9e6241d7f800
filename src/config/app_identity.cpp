#include "config/app_identity.hpp"

namespace velotap {
namespace {

constexpr const char* kMarker = "lowercaseIdentityMigrationCompleted";

}  // namespace

void AppIdentity::migratePreferences(PreferencesStorage& storage, std::string_view currentDomain,
                                     std::string_view legacyDomain) {
  const ValueMap current = storage.load(currentDomain);
  const auto marker = current.find(kMarker);
  if (marker != current.end() && marker->second == Value(true)) return;
  ValueMap merged = storage.load(legacyDomain);
  for (const auto& [key, value] : current) merged.insert_or_assign(key, value);
  merged.insert_or_assign(kMarker, true);
  storage.store(currentDomain, merged);
}

}  // namespace velotap
