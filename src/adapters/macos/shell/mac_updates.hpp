// Software updates over the Sparkle framework, if the bundle brings it along. Main thread.
//
// Feed and policy stand in the bundle's Info.plist. A build without a feed, without the framework,
// or whose updater refuses to run has no updates and says why.
#pragma once

#include <memory>

#include "platform/updates.hpp"

namespace velotap {

/// The framework's updater, which only Objective-C can reach.
class CocoaUpdater {
 public:
  virtual ~CocoaUpdater() = default;
  /// The feed's address in Info.plist; empty when there is none.
  [[nodiscard]] virtual std::string feed() = 0;
  /// Loads the framework and makes its updater, started. False when either fails. Once.
  virtual bool start() = 0;
  /// As all that follows, only after a successful start.
  virtual void checkForUpdates() = 0;
  [[nodiscard]] virtual bool automaticallyChecks() = 0;
  virtual void setAutomaticallyChecks(bool on) = 0;
  /// Seconds since 1970.
  [[nodiscard]] virtual std::optional<double> lastCheck() = 0;
  /// Calls back on the main thread after one of the answers above changed.
  [[nodiscard]] virtual Observation observe(std::function<void()> changed) = 0;

  /// The updater of this bundle. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<CocoaUpdater> system();
};

class MacUpdates final : public UpdateService {
 public:
  explicit MacUpdates(CocoaUpdater& updater) : updater_(updater) {}

  void start() override;
  [[nodiscard]] std::optional<std::string> unavailableReason() const override;
  void checkForUpdates() override;
  [[nodiscard]] bool checksAutomatically() const override;
  void setChecksAutomatically(bool on) override;
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastCheck() const override;
  [[nodiscard]] Observation observe(std::function<void()> changed) override;

 private:
  enum class State { notStarted, running, failed };

  CocoaUpdater& updater_;
  State state_ = State::notStarted;
  ObserverList<> changes_;
  Observation systemChanges_;
};

}  // namespace velotap
