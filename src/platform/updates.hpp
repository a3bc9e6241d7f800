// The port for software updates: where new versions are announced, and asking for them.
//
// Main thread. Feed and policy come from the build, not from code. A check that the person asked
// for reports to the person itself; one by the clock is silent unless there is something new.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "base/observer_list.hpp"

namespace velotap {

class UpdateService {
 public:
  virtual ~UpdateService() = default;
  /// Begins to check by the clock, where the policy says so. Once.
  virtual void start() = 0;
  /// Why there can be no updates, as a key of the localisation tables: this build names no feed, or
  /// the feed cannot be trusted. Nothing when there can.
  [[nodiscard]] virtual std::optional<std::string> unavailableReason() const = 0;
  /// Checks at once, because the person asked, and tells them the outcome whatever it is. Asking
  /// again while a check is under way does not start a second one.
  virtual void checkForUpdates() = 0;
  [[nodiscard]] virtual bool checksAutomatically() const = 0;
  virtual void setChecksAutomatically(bool on) = 0;
  /// When the last check ended with an answer, by whoever started it.
  [[nodiscard]] virtual std::optional<std::chrono::system_clock::time_point> lastCheck() const = 0;
  /// Calls back after any of the answers above changed.
  [[nodiscard]] virtual Observation observe(std::function<void()> changed) = 0;
};

}  // namespace velotap
