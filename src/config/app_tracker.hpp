// Which application is in front, and whether gestures may reach it.
//
// Written on the main thread (activations) and on whichever thread changes the rule lists; read on
// the frame thread at every frame and before every delivery. One lock guards everything; it comes
// after the engine's and the pinch engine's. The program's own windows get no gestures, except over
// the practice target. Identifiers are compared exactly, case included.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/app_id.hpp"
#include "base/lock_order.hpp"
#include "base/observer_list.hpp"
#include "config/config.hpp"
#include "config/practice_target.hpp"
#include "platform/event_stream.hpp"
#include "platform/notification_center.hpp"
#include "platform/workspace.hpp"

namespace velotap {

class AppTracker {
 public:
  struct Front {
    AppId bundleID;
    std::string name;  ///< the identifier's text where the application has no name
  };

  /// What a gesture that starts now belongs to.
  struct GestureContext {
    AppId bundleID;
    bool usesKeystrokeZoom = false;
    bool isPractice = false;  ///< the program itself, with the pointer over the practice target
  };

  AppTracker(Config& config, Workspace& workspace, EventStream& events, PracticeTarget& practice,
             NotificationCenter& notifications);

  /// The tracker of this process.
  [[nodiscard]] static AppTracker& shared();

  /// Reads the rules and the application in front, and follows both. Main thread, once.
  void start();

  /// Replaces both rule sets by what the settings hold.
  void refreshConfiguredApps();

  /// An application came to the front; nothing when the system does not say which. Main thread.
  void update(const std::optional<RunningApplication>& application);

  /// The last application in front other than the program itself.
  [[nodiscard]] std::optional<Front> frontApp() const;

  /// Nothing when no gesture may be recognised in front of the user now.
  [[nodiscard]] std::optional<GestureContext> gestureContext() const;

  /// Whether a gesture recognised for `target` may still be delivered: the application in front is
  /// asked anew, not remembered.
  [[nodiscard]] bool mayDeliver(AppId target, bool allowPractice) const;

 private:
  /// Identifiers of one rule list, sorted by address for a short search without allocation.
  class IdSet {
   public:
    IdSet() = default;
    explicit IdSet(const std::vector<std::string>& ids);
    [[nodiscard]] bool contains(AppId id) const noexcept;

   private:
    std::vector<AppId> ids_;
  };

  [[nodiscard]] bool pointerOverPracticeTarget() const;
  void judgeActiveLocked();

  Config& config_;
  Workspace& workspace_;
  EventStream& events_;
  PracticeTarget& practice_;
  NotificationCenter& notifications_;

  mutable OrderedMutex<LockRank::appTracker> lock_;
  std::optional<Front> frontApp_;
  AppId activeBundleID_;
  IdSet ignoredBundleIDs_;
  IdSet keystrokeZoomBundleIDs_;
  // What the rules say of the active application, kept so that a frame looks nothing up.
  bool activeIsIgnored_ = false;
  bool activeUsesKeystrokeZoom_ = false;

  Observation activations_;
  Observation listChanges_;
};

}  // namespace velotap
