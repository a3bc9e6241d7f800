#include "adapters/macos/preferences/cf_preferences_storage.hpp"

#include <algorithm>

#include "adapters/macos/core_foundation/cf_values.hpp"

namespace velotap {
namespace {

// What is to be written so that `before` becomes `after`.
struct Difference {
  ValueMap set;
  std::vector<std::string> removed;
};

Difference between(const ValueMap& before, const ValueMap& after) {
  Difference difference;
  for (const auto& [key, value] : after) {
    const auto old = before.find(key);
    if (old == before.end() || !(old->second == value)) difference.set.emplace(key, value);
  }
  for (const auto& [key, value] : before) {
    if (!after.contains(key)) difference.removed.push_back(key);
  }
  return difference;
}

}  // namespace

struct CfPreferencesStorage::Watched {
  ObserverList<> observers;
  Observation system;
};

CfPreferencesStorage::CfPreferencesStorage(const CoreFoundationApi& cf, PreferencesChanges& changes,
                                           MainQueue& queue, std::vector<std::string> keys)
    : cf_(cf),
      changes_(changes),
      queue_(queue),
      keys_(std::move(keys)),
      self_(std::make_shared<CfPreferencesStorage*>(this)) {}

CfPreferencesStorage::~CfPreferencesStorage() = default;

ValueMap CfPreferencesStorage::load(std::string_view domain) {
  ValueMap values = read(domain);
  seen_.insert_or_assign(std::string(domain), values);
  return values;
}

bool CfPreferencesStorage::store(std::string_view domain, const ValueMap& values) {
  const auto known = seen_.find(domain);
  const ValueMap before = known != seen_.end() ? known->second : read(domain);
  const Difference difference = between(before, values);
  if (!write(domain, difference.set, difference.removed)) {
    // The service has already taken the values over and would go on answering with them.
    const Difference back = between(values, before);
    static_cast<void>(write(domain, back.set, back.removed));
    return false;
  }
  seen_.insert_or_assign(std::string(domain), values);
  return true;
}

Observation CfPreferencesStorage::observe(std::string_view domain, std::function<void()> changed) {
  auto& watched = watched_[std::string(domain)];
  if (watched == nullptr) {
    watched = std::make_unique<Watched>();
    std::vector<std::string> keys = keys_;
    for (const auto& [key, value] : load(domain)) {
      if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
    }
    watched->system = changes_.observe(
        domain, keys, [&queue = queue_, weak = std::weak_ptr(self_), domain = std::string(domain)] {
          queue.async([weak, domain] {
            if (const auto self = weak.lock()) (*self)->recheck(domain);
          });
        });
  }
  return watched->observers.add(std::move(changed));
}

void CfPreferencesStorage::recheck() {
  std::vector<std::string> domains;
  for (const auto& [domain, watched] : watched_) domains.push_back(domain);
  for (const std::string& domain : domains) recheck(domain);
}

void CfPreferencesStorage::recheck(const std::string& domain) {
  const auto before = seen_.find(domain);
  ValueMap values = read(domain);
  if (before != seen_.end() && before->second == values) return;  // our own writing, or told before
  seen_.insert_or_assign(domain, std::move(values));
  watched_.at(domain)->observers.notify();
}

ValueMap CfPreferencesStorage::read(std::string_view domain) const {
  const auto application = cfText(cf_, domain);
  if (!application) return {};
  const CfRef<CFDictionaryRef> stored(
      cf_, cf_.CFPreferencesCopyMultiple(nullptr, application.get(), *cf_.kCFPreferencesCurrentUser,
                                         *cf_.kCFPreferencesAnyHost));
  return stored ? entriesOf(cf_, stored.get()) : ValueMap();
}

bool CfPreferencesStorage::write(std::string_view domain, const ValueMap& set,
                                 const std::vector<std::string>& removed) const {
  if (set.empty() && removed.empty()) return true;
  const auto application = cfText(cf_, domain);
  const auto values = cfDictionary(cf_, set);
  const auto keys = cfTexts(cf_, removed);
  if (!application || !values || !keys) return false;
  const CFStringRef user = *cf_.kCFPreferencesCurrentUser;
  const CFStringRef host = *cf_.kCFPreferencesAnyHost;
  cf_.CFPreferencesSetMultiple(values.get(), keys.get(), application.get(), user, host);
  return cf_.CFPreferencesSynchronize(application.get(), user, host) != 0;
}

}  // namespace velotap
