#include "config/app_tracker.hpp"

#include <algorithm>
#include <functional>
#include <utility>

#include "platform/platform.hpp"

namespace velotap {
namespace {

bool before(AppId a, AppId b) {
  return std::less<>()(a.text().data(), b.text().data());
}

}  // namespace

AppTracker::IdSet::IdSet(const std::vector<std::string>& ids) {
  ids_.reserve(ids.size());
  for (const std::string& id : ids) ids_.push_back(AppId::intern(id));
  std::sort(ids_.begin(), ids_.end(), before);
}

bool AppTracker::IdSet::contains(AppId id) const noexcept {
  return std::binary_search(ids_.begin(), ids_.end(), id, before);
}

AppTracker::AppTracker(Config& config, Workspace& workspace, EventStream& events,
                       PracticeTarget& practice, NotificationCenter& notifications)
    : config_(config),
      workspace_(workspace),
      events_(events),
      practice_(practice),
      notifications_(notifications) {}

AppTracker& AppTracker::shared() {
  static AppTracker instance(Config::shared(), Platform::current().workspace,
                             Platform::current().events, PracticeTarget::shared(),
                             Platform::current().notifications);
  return instance;
}

void AppTracker::start() {
  refreshConfiguredApps();
  update(workspace_.frontmostApplication());
  activations_ = workspace_.observeActivations(
      [this](const std::optional<RunningApplication>& application) { update(application); });
  listChanges_ = notifications_.observe(kAppListsDidChange, [this] { refreshConfiguredApps(); });
}

void AppTracker::refreshConfiguredApps() {
  IdSet ignored(Config::normalizedAppIDs(config_.ignoredApps()));
  IdSet keystrokeZoom(Config::normalizedAppIDs(config_.keystrokeZoomApps()));
  const std::lock_guard guard(lock_);
  ignoredBundleIDs_ = std::move(ignored);
  keystrokeZoomBundleIDs_ = std::move(keystrokeZoom);
  judgeActiveLocked();
}

void AppTracker::update(const std::optional<RunningApplication>& application) {
  const AppId id = application ? application->bundleId : AppId();
  const AppId own = workspace_.ownBundleId();
  const std::lock_guard guard(lock_);
  activeBundleID_ = id;
  judgeActiveLocked();
  // Coming to the front ourselves keeps the application that the user came from. Nobody being in
  // front with no identity of our own tells nothing either.
  if (id == own) return;
  if (!id) {
    frontApp_.reset();
    return;
  }
  frontApp_ = Front{id, application->name.empty() ? std::string(id.text()) : application->name};
}

std::optional<AppTracker::Front> AppTracker::frontApp() const {
  const std::lock_guard guard(lock_);
  return frontApp_;
}

std::optional<AppTracker::GestureContext> AppTracker::gestureContext() const {
  const std::lock_guard guard(lock_);
  if (!activeBundleID_) return std::nullopt;
  const bool own = activeBundleID_ == workspace_.ownBundleId();
  if (own && !pointerOverPracticeTarget()) return std::nullopt;
  if (activeIsIgnored_) return std::nullopt;
  return GestureContext{activeBundleID_, activeUsesKeystrokeZoom_, own};
}

bool AppTracker::mayDeliver(AppId target, bool allowPractice) const {
  const AppId current = workspace_.frontmostBundleId();
  const AppId own = workspace_.ownBundleId();
  if (!current || current != target) return false;
  if (current == own && !(allowPractice && pointerOverPracticeTarget())) return false;
  const std::lock_guard guard(lock_);
  return !ignoredBundleIDs_.contains(current);
}

bool AppTracker::pointerOverPracticeTarget() const {
  return practice_.contains(events_.pointerLocation().value_or(Point{}));
}

void AppTracker::judgeActiveLocked() {
  activeIsIgnored_ = ignoredBundleIDs_.contains(activeBundleID_);
  activeUsesKeystrokeZoom_ = keystrokeZoomBundleIDs_.contains(activeBundleID_);
}

}  // namespace velotap
