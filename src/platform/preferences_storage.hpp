// The port for the user's stored settings: named domains, each a flat dictionary.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/observer_list.hpp"
#include "base/value.hpp"

namespace velotap {

/// Main thread, but for what is said below.
class PreferencesStorage {
 public:
  virtual ~PreferencesStorage() = default;
  /// The whole stored dictionary; empty when there is none or it cannot be read.
  [[nodiscard]] virtual ValueMap load(std::string_view domain) = 0;
  /// Replaces the stored dictionary; false, with the old one intact, when it cannot be written.
  virtual bool store(std::string_view domain, const ValueMap& values) = 0;
  /// Calls back on the main thread after another writer changed the domain.
  [[nodiscard]] virtual Observation observe(std::string_view domain,
                                            std::function<void()> changed) = 0;
};

/// Gestures on a trackpad that a desktop may turn into a click by itself.
enum class TrackpadGesture : std::uint8_t { threeFingerTap, threeFingerClick };

/// What belongs to the operating system or the desktop. Any thread.
class SystemPreferences {
 public:
  virtual ~SystemPreferences() = default;
  /// One of its settings, by domain and key.
  [[nodiscard]] virtual std::optional<Value> read(std::string_view domain,
                                                  std::string_view key) = 0;
  /// The desktop turns this gesture into a click of its own, so that whoever posts another for it
  /// clicks twice. Without allocation. Never, where desktops do no such thing.
  [[nodiscard]] virtual bool desktopClicksFor(TrackpadGesture /*gesture*/) const noexcept {
    return false;
  }
};

}  // namespace velotap
