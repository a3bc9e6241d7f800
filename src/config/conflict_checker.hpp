// Tells a person, once for each gesture, that the system itself also answers a gesture that they
// just switched on.
//
// Keeps nothing but one boolean for each gesture in the settings, set before the alert is seen, so
// that a dismissed alert never comes back. Main thread, but for `isEnabled`, which any thread may
// ask.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "config/defaults_store.hpp"
#include "platform/alerts.hpp"
#include "platform/main_queue.hpp"
#include "platform/preferences_storage.hpp"

namespace velotap {

/// Where the system keeps its trackpad settings, built-in and wireless.
inline constexpr std::array<std::string_view, 2> kTrackpadDomains = {
    "com.apple.AppleMultitouchTrackpad", "com.apple.driver.AppleBluetoothMultitouch.trackpad"};
inline constexpr std::array<std::string_view, 2> kMouseDomains = {
    "com.apple.AppleMultitouchMouse", "com.apple.driver.AppleBluetoothMultitouch.mouse"};

class ConflictChecker {
 public:
  /// `localize` turns a key of the localisation tables into text; looked up when an alert shows.
  using Localize = std::function<std::string(std::string_view key)>;

  struct Warning {
    std::string text;          ///< localised explanation
    std::string settingsPane;  ///< the page of the system's settings that can end the overlap
  };

  ConflictChecker(SystemPreferences& system, DefaultsStore& defaults, MainQueue& queue,
                  Alerts& alerts, Localize localize);

  /// To be called right after the gesture with this settings key went from off to on.
  void checkAfterEnabling(std::string_view gestureKey);

  /// Nothing when the gesture overlaps no system gesture that is switched on.
  [[nodiscard]] std::optional<Warning> warning(std::string_view gestureKey) const;

  /// Whether any of the domains holds this preference as an integer other than zero. Values of
  /// other types do not count.
  [[nodiscard]] static bool isEnabled(SystemPreferences& system, std::string_view key,
                                      std::span<const std::string_view> domains);

 private:
  SystemPreferences& system_;
  DefaultsStore& defaults_;
  MainQueue& queue_;
  Alerts& alerts_;
  Localize localize_;
};

}  // namespace velotap
