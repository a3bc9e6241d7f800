#include "adapters/macos/shell/mac_updates.hpp"

namespace velotap {

void MacUpdates::start() {
  if (state_ != State::notStarted || updater_.feed().empty()) return;
  state_ = updater_.start() ? State::running : State::failed;
  if (state_ == State::running) {
    systemChanges_ = updater_.observe([this] { changes_.notify(); });
  }
  changes_.notify();
}

std::optional<std::string> MacUpdates::unavailableReason() const {
  if (updater_.feed().empty()) return "updates.unavailable.feed";
  if (state_ == State::failed) return "updates.unavailable.trust";
  return std::nullopt;
}

void MacUpdates::checkForUpdates() {
  // The framework itself brings a check that is under way to the front instead of starting another.
  if (state_ == State::running) updater_.checkForUpdates();
}

bool MacUpdates::checksAutomatically() const {
  return state_ == State::running && updater_.automaticallyChecks();
}

void MacUpdates::setChecksAutomatically(bool on) {
  // Setting it tells the framework that the person decided, so only a difference is set.
  if (state_ == State::running && updater_.automaticallyChecks() != on) {
    updater_.setAutomaticallyChecks(on);
  }
}

std::optional<std::chrono::system_clock::time_point> MacUpdates::lastCheck() const {
  if (state_ != State::running) return std::nullopt;
  const auto seconds = updater_.lastCheck();
  if (!seconds) return std::nullopt;
  return std::chrono::system_clock::time_point(
      std::chrono::duration_cast<std::chrono::system_clock::duration>(
          std::chrono::duration<double>(*seconds)));
}

Observation MacUpdates::observe(std::function<void()> changed) {
  return changes_.add(std::move(changed));
}

}  // namespace velotap
