// One domain of the user's settings: what is stored, laid over what is registered.
//
// Reading is safe from any thread; writing belongs to the main thread. Every change, our own or
// another writer's, is announced to the observers on the main thread, before the call that made it
// returns. A value that could not be written stays in force for this run, over other writers'
// changes too, and is written with the next value that can be.
#pragma once

#include <functional>
#include <map>
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

  /// False when the value could not be written; it is in force all the same. A value that no
  /// storage can hold (a number that is not finite, a text that is not UTF-8) is refused: false,
  /// and nothing changes, because it would keep every later value from being written too.
  bool set(std::string_view key, Value value);
  bool remove(std::string_view key);

  /// Values for keys that nothing is stored for; never written. Replaces earlier registrations of
  /// the same keys.
  void registerDefaults(const ValueMap& values);

  [[nodiscard]] Observation observeChanges(std::function<void()> changed);

 private:
  /// What keys shall hold; nothing for a key that shall be gone.
  using Changes = std::map<std::string, std::optional<Value>, std::less<>>;

  bool write(std::string_view key, std::optional<Value> value);
  void reload();
  void forget(const Changes& written);
  void say(std::string_view line);
  static void apply(const Changes& changes, ValueMap& values);

  PreferencesStorage& storage_;
  DiagnosticLog& log_;
  std::string domain_;
  mutable OrderedMutex<LockRank::leaf> lock_;
  ValueMap stored_;
  ValueMap registered_;
  Changes unwritten_;  // part of stored_; main thread
  ObserverList<> changes_;
  Observation foreignChanges_;
};

/// How a stored value reads as a boolean.
[[nodiscard]] bool booleanReading(const Value& value) noexcept;

/// Whether every storage can hold the value: all its numbers are finite, all its texts UTF-8.
[[nodiscard]] bool isStorable(const Value& value);

}  // namespace velotap
