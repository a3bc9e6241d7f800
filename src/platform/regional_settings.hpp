// The port for the person's languages and the notation of her region.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/observer_list.hpp"

namespace velotap {

/// Main thread.
class RegionalSettings {
 public:
  virtual ~RegionalSettings() = default;
  /// Tags such as "de-AT", the most wanted first.
  [[nodiscard]] virtual std::vector<std::string> preferredLanguages() const = 0;
  /// Whose notation numbers and dates follow, such as "de_AT".
  [[nodiscard]] virtual std::string locale() const = 0;
  /// Such as "Europe/Sofia"; empty when the system does not name it.
  [[nodiscard]] virtual std::string timeZone() const = 0;
  /// What the zone adds to universal time at that moment. Both in seconds.
  [[nodiscard]] virtual std::int64_t secondsFromUniversalTime(std::int64_t moment) const = 0;
  /// Calls back on the main thread after the locale, the languages or the time zone changed.
  [[nodiscard]] virtual Observation observeChanges(std::function<void()> changed) = 0;
};

}  // namespace velotap
