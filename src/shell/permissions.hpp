// Watches whether the person trusts the program to read touches and post events, and tells each
// change once.
//
// The permission is asked for anew every second; where the system tells of changes, it is not asked
// again as long as it is given. Main thread throughout. What asking means are closures, so that the
// logic is exercised without a permission to lose.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/observer_list.hpp"
#include "config/defaults_store.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class Permissions {
 public:
  static constexpr double kPollSeconds = 1.0;

  struct Closures {
    std::function<bool()> readTrust;
    /// Shows the system's own prompt; does not wait for the answer.
    std::function<void()> requestTrust;
    /// Tells of possible changes; an inactive observation, or no closure, where nothing tells.
    std::function<Observation(std::function<void()> mayHaveChanged)> observeTrust{};
  };

  /// Reads the trust at once, so that `granted` is true to it from the start.
  Permissions(DefaultsStore& defaults, MainQueue& queue, Closures closures);
  ~Permissions();
  Permissions(const Permissions&) = delete;
  Permissions& operator=(const Permissions&) = delete;

  /// The permissions of this process, over the current platforms.
  [[nodiscard]] static Permissions& shared();

  [[nodiscard]] bool granted() const noexcept { return granted_; }
  /// Calls back whenever `granted` changes, whether or not anybody monitors.
  [[nodiscard]] Observation observeGranted(std::function<void(bool)> changed);

  /// Tells the present state at once and then every change. A second call replaces the first one's
  /// closure.
  void startMonitoring(std::function<void(bool granted)> onChange);
  void stopMonitoring();

  /// Reads the trust, and tells what changed.
  void refresh();

  /// Shows the system's prompt, unless the permission is given or the prompt was shown before: at
  /// most once in the life of the process.
  void requestOnce();
  [[nodiscard]] bool requestedThisSession() const noexcept { return requestedThisSession_; }

  /// Whether the explanation is to be shown by itself at this launch: at most once for each person,
  /// and only where the program is switched on and not trusted. Asking counts as having shown it.
  [[nodiscard]] bool takeInitialPresentation(bool enabled);

  Closures closures;

 private:
  void arrangePoll();

  DefaultsStore& defaults_;
  MainQueue& queue_;
  bool granted_;
  bool requestedThisSession_ = false;
  bool monitoring_ = false;
  std::optional<bool> lastDelivered_;
  std::function<void(bool)> onChange_;
  std::shared_ptr<DelayedWork> timer_;
  Observation trustChanges_;
  ObserverList<bool> grantedChanges_;
};

}  // namespace velotap
