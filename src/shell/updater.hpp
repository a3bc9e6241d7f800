// The program's one updater.
//
// Main thread. Making it starts it; where new versions come from, and how often they are looked
// for, is the build's matter.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "base/observer_list.hpp"
#include "platform/updates.hpp"

namespace velotap {

class Updater {
 public:
  explicit Updater(UpdateService& service) : service_(service) { service_.start(); }

  /// The updater of this process, over the current shell platform.
  [[nodiscard]] static Updater& shared();

  /// Whether the person can ask for updates at all, and if not why, as a key of the localisation
  /// tables.
  [[nodiscard]] bool canCheckForUpdates() const { return !unavailableReason(); }
  [[nodiscard]] std::optional<std::string> unavailableReason() const {
    return service_.unavailableReason();
  }

  /// Because the person asks; they are told the outcome. Nothing where there can be no updates.
  void checkForUpdates() {
    if (canCheckForUpdates()) service_.checkForUpdates();
  }

  [[nodiscard]] bool automaticallyChecks() const { return service_.checksAutomatically(); }
  void setAutomaticallyChecks(bool on) { service_.setChecksAutomatically(on); }
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastCheck() const {
    return service_.lastCheck();
  }
  [[nodiscard]] Observation observe(std::function<void()> changed) {
    return service_.observe(std::move(changed));
  }

 private:
  UpdateService& service_;
};

}  // namespace velotap
