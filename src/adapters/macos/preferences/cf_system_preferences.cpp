#include "adapters/macos/preferences/cf_system_preferences.hpp"

#include "adapters/macos/core_foundation/cf_values.hpp"

namespace velotap {

std::optional<Value> CfSystemPreferences::read(std::string_view domain, std::string_view key) {
  const auto application = cfText(cf_, domain);
  const auto name = cfText(cf_, key);
  if (!application || !name) return std::nullopt;
  const CfRef<CFPropertyListRef> value(
      cf_, cf_.CFPreferencesCopyAppValue(name.get(), application.get()));
  if (!value) return std::nullopt;
  return valueOf(cf_, value.get());
}

}  // namespace velotap
