// Stored settings over the preferences service: a domain is an application identifier, for the
// current user on any host, which is where `defaults` and the user defaults look as well.
//
// Main thread. A domain is shared with the system and with libraries that keep things of their own
// in it, some of a type that settings cannot have. Therefore storing writes what differs from what
// was last seen here, removes only what was seen here, and leaves all else alone.
//
// Other writers are heard of through the keys that the maker names and those already stored; what
// the system cannot tell of is noticed by `recheck`, for the moments when the program comes to the
// front.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adapters/macos/core_foundation/core_foundation_api.hpp"
#include "adapters/macos/preferences/preferences_changes.hpp"
#include "platform/main_queue.hpp"
#include "platform/preferences_storage.hpp"

namespace velotap {

class CfPreferencesStorage final : public PreferencesStorage {
 public:
  CfPreferencesStorage(const CoreFoundationApi& cf, PreferencesChanges& changes, MainQueue& queue,
                       std::vector<std::string> keys);
  ~CfPreferencesStorage() override;

  [[nodiscard]] ValueMap load(std::string_view domain) override;
  bool store(std::string_view domain, const ValueMap& values) override;
  [[nodiscard]] Observation observe(std::string_view domain,
                                    std::function<void()> changed) override;

  /// Compares every watched domain with what was last seen of it.
  void recheck();

 private:
  struct Watched;

  [[nodiscard]] ValueMap read(std::string_view domain) const;
  [[nodiscard]] bool write(std::string_view domain, const ValueMap& set,
                           const std::vector<std::string>& removed) const;
  void recheck(const std::string& domain);

  const CoreFoundationApi& cf_;
  PreferencesChanges& changes_;
  MainQueue& queue_;
  std::vector<std::string> keys_;
  std::map<std::string, ValueMap, std::less<>> seen_;
  std::map<std::string, std::unique_ptr<Watched>, std::less<>> watched_;
  std::shared_ptr<CfPreferencesStorage*> self_;  // empty pointer once this is gone
};

}  // namespace velotap
