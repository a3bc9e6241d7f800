// Settings domains in memory, open to the test: for what the storage itself must hold.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "platform/preferences_storage.hpp"

namespace velotap::test {

class MemoryPreferences final : public PreferencesStorage {
 public:
  std::map<std::string, ValueMap, std::less<>> domains;
  bool refuses = false;
  [[nodiscard]] ValueMap load(std::string_view domain) override {
    const auto found = domains.find(domain);
    return found == domains.end() ? ValueMap() : found->second;
  }
  bool store(std::string_view domain, const ValueMap& values) override {
    if (refuses) return false;
    domains.insert_or_assign(std::string(domain), values);
    return true;
  }
  [[nodiscard]] Observation observe(std::string_view, std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }
  ObserverList<> changes;  ///< notify: another writer changed a domain
};

}  // namespace velotap::test
