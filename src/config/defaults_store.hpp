// One domain of the user's settings: what is stored, laid over what is registered.
//
// Reading is safe from any thread; writing belongs to the main thread. Every change, our own or
// another writer's, is announced to the observers on the main thread. A value that could not be
// written stays in force for this run.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/lock_order.hpp"
#include "base/observer_list.hpp"
#include "base/value.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/preferences_storage.hpp"

namespace velotap {

/// The domain of every setting, which is also the program's identity.
inline constexpr std::string_view kSettingsDomain = "app.norwend.velotap";

class DefaultsStore {
 public:
  DefaultsStore(PreferencesStorage& storage, DiagnosticLog& log,
                std::string_view domain = kSettingsDomain);

  /// The store of this process.
  [[nodiscard]] static DefaultsStore& shared();

  /// What the key holds: the stored value, else the registered one.
  [[nodiscard]] std::optional<Value> object(std::string_view key) const;

  /// A plain boolean look-up. Numbers other than zero and texts such as "YES", "true" or "1" are
  /// true; whatever is no boolean in any reading, or absent, is false.
  [[nodiscard]] bool boolean(std::string_view key) const;
  /// Nothing unless the key holds a text.
  [[nodiscard]] std::optional<std::string> text(std::string_view key) const;
  /// Empty unless the key holds an array of nothing but texts.
  [[nodiscard]] std::vector<std::string> texts(std::string_view key) const;

  /// False when the value could not be written; it is in force all the same.
  bool set(std::string_view key, Value value);
  bool remove(std::string_view key);

  /// Values for keys that nothing is stored for; never written. Replaces earlier registrations of
  /// the same keys.
  void registerDefaults(const ValueMap& values);

  [[nodiscard]] Observation observeChanges(std::function<void()> changed);

 private:
  bool write(const std::function<void(ValueMap&)>& change);
  void reload();

  PreferencesStorage& storage_;
  DiagnosticLog& log_;
  std::string domain_;
  mutable OrderedMutex<LockRank::leaf> lock_;
  ValueMap stored_;
  ValueMap registered_;
  ObserverList<> changes_;
  Observation foreignChanges_;
};

/// How a stored value reads as a boolean.
[[nodiscard]] bool booleanReading(const Value& value) noexcept;

}  // namespace velotap
