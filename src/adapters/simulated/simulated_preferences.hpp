// Settings domains in memory, and a system whose own settings are whatever the simulation says.
//
// `SimulatedPreferences` belongs to the main thread; `SimulatedSystemPreferences` may be read from
// any thread.
#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "platform/preferences_storage.hpp"

namespace velotap {

class SimulatedPreferences final : public PreferencesStorage {
 public:
  [[nodiscard]] ValueMap load(std::string_view domain) override;
  bool store(std::string_view domain, const ValueMap& values) override;
  [[nodiscard]] Observation observe(std::string_view domain,
                                    std::function<void()> changed) override;

  /// Replaces a domain as another program would, and tells those who observe it.
  void storeAsAnotherWriter(std::string_view domain, ValueMap values);
  /// From now on nothing can be written.
  void setReadOnly(bool readOnly) { readOnly_ = readOnly; }

 private:
  struct Domain {
    ValueMap values;
    ObserverList<> observers;
  };
  [[nodiscard]] Domain& domain(std::string_view name);

  std::map<std::string, Domain, std::less<>> domains_;
  bool readOnly_ = false;
};

class SimulatedSystemPreferences final : public SystemPreferences {
 public:
  [[nodiscard]] std::optional<Value> read(std::string_view domain, std::string_view key) override;
  void set(std::string_view domain, std::string_view key, Value value);
  [[nodiscard]] bool desktopClicksFor(TrackpadGesture gesture) const noexcept override;
  void setDesktopClicksFor(TrackpadGesture gesture, bool clicks) noexcept;

 private:
  std::array<std::atomic<bool>, 2> clicks_{};  // by gesture
  std::mutex lock_;
  std::map<std::pair<std::string, std::string>, Value> values_;
};

}  // namespace velotap
