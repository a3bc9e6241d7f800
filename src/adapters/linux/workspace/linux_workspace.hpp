// Which application is in front, on Linux desktops.
//
// A source (front_source.hpp) reports windows, the installed desktop entries give them identifier
// and name, and observers hear of every change within the same turn of the loop. What stands in
// front is kept in one atomic, so that any thread may ask without a lock; it is as new as the last
// event of the desktop that the main thread has read.
//
// Where the desktop does not tell, or no longer, every application goes by the identifier
// kUnknownApplication: gestures go on working, rules for applications cannot, and `source` says so
// and why. This is different from "nothing is in front", which a desktop can say too.
//
// Main thread but for what is said below. The services must outlive it.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/session/session_environment.hpp"
#include "adapters/linux/workspace/activation_filter.hpp"
#include "adapters/linux/workspace/installed_applications.hpp"
#include "adapters/linux/workspace/source_chooser.hpp"
#include "platform/workspace.hpp"

namespace velotap {

/// Stands for whatever is in front where the desktop keeps that to itself. Not the identifier of
/// any program, and not for rules: they would hold for all.
inline constexpr const char* kUnknownApplication = "app.norwend.velotap.unknown-application";

class LinuxWorkspace final : public Workspace {
 public:
  struct Services {
    DescriptorLoop& loop;
    MainQueue& queue;
    Clock& clock;
    DiagnosticLog& log;
  };
  /// What is particular to a desktop; tests make their own.
  struct Desktop {
    std::vector<FrontSourceCandidate> candidates;
    std::unique_ptr<RecoverySignal> recovery;
    std::vector<std::string> applicationFolders;
    std::vector<std::string> languages;
  };
  [[nodiscard]] static Desktop desktopOf(const SessionEnvironment& session,
                                         const Services& services);

  LinuxWorkspace(AppId ownBundleId, Desktop desktop, const Services& services);
  ~LinuxWorkspace() override;

  /// Starts looking. Until the first answer the unknown application is in front.
  void start() { chooser_.start(); }

  /// Any thread.
  [[nodiscard]] AppId ownBundleId() const override { return own_; }
  /// Any thread; neither locks nor allocates.
  [[nodiscard]] AppId frontmostBundleId() override {
    return frontmost_.load(std::memory_order_acquire);
  }
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override { return front_; }
  [[nodiscard]] Observation observeActivations(
      std::function<void(const std::optional<RunningApplication>&)> activated) override {
    return activations_.add(std::move(activated));
  }

  /// Where the answer comes from; with `none`, rules for applications are unavailable.
  [[nodiscard]] const FrontSourceStatus& source() const noexcept { return chooser_.status(); }
  [[nodiscard]] Observation observeSource(std::function<void(const FrontSourceStatus&)> changed) {
    return sources_.add(std::move(changed));
  }

  /// Names and icons for lists of applications.
  [[nodiscard]] InstalledApplications& applications() noexcept { return applications_; }

 private:
  using Front = std::optional<RunningApplication>;

  void statusChanged(const FrontSourceStatus& status);
  void windowReported(const std::optional<FrontWindow>& window);
  void settleLater();
  void become(Front front);
  [[nodiscard]] RunningApplication identify(const FrontWindow& window);
  void refreshSoon();
  [[nodiscard]] RunningApplication lookUp(const FrontWindow& window);

  static_assert(std::atomic<AppId>::is_always_lock_free);
  const AppId own_;
  const AppId unknown_;
  const Services services_;
  std::atomic<AppId> frontmost_;
  Front front_;
  InstalledApplications applications_;
  /// What windows were found to be. Outlives a change of the installed applications by one answer,
  /// so that a change of focus never waits for reading folders that it has no need of.
  std::map<std::string, RunningApplication> known_;
  std::optional<FrontWindow> window_;  ///< the last one reported, while a source is live
  std::shared_ptr<DelayedWork> refresh_;
  ActivationFilter filter_;
  std::shared_ptr<DelayedWork> settling_;
  ObserverList<const Front&> activations_;
  ObserverList<const FrontSourceStatus&> sources_;
  std::unique_ptr<RecoverySignal> recovery_;
  SourceChooser chooser_;
};

}  // namespace velotap
