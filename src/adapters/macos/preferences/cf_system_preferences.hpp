// The system's own settings over the preferences service, read where every program reads them: the
// current user first, then what was set for this machine or for everybody. Any thread.
#pragma once

#include "adapters/macos/core_foundation/core_foundation_api.hpp"
#include "platform/preferences_storage.hpp"

namespace velotap {

class CfSystemPreferences final : public SystemPreferences {
 public:
  explicit CfSystemPreferences(const CoreFoundationApi& cf) : cf_(cf) {}
  [[nodiscard]] std::optional<Value> read(std::string_view domain, std::string_view key) override;

 private:
  const CoreFoundationApi& cf_;
};

}  // namespace velotap
