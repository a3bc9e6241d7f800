#include "config/conflict_checker.hpp"

#include <array>
#include <utility>

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

struct Rule {
  std::string_view gestureKey;
  std::string_view systemKey;  // empty: the overlap is there whatever the system's settings say
  std::span<const std::string_view> domains;
  std::string_view explanation;
  std::string_view settingsPane;
};

constexpr std::string_view kTrackpadPane = "com.apple.preference.trackpad";
constexpr std::string_view kMousePane = "com.apple.preference.mouse";

constexpr std::array kRules = {
    Rule{keys::kPadTap3, "TrackpadThreeFingerTapGesture", kTrackpadDomains,
         "conflict.trackpad-three-finger-tap", kTrackpadPane},
    Rule{keys::kMousePinchZoom, "MouseTwoFingerHorizSwipeGesture", kMouseDomains,
         "conflict.mouse-two-finger-swipe", kMousePane},
    Rule{keys::kMouseClick2, "MouseTwoFingerHorizSwipeGesture", kMouseDomains,
         "conflict.mouse-two-finger-swipe", kMousePane},
    Rule{keys::kMouseSwipe3Nav, "", {}, "conflict.mouse-three-finger-swipe", kMousePane},
};

constexpr int kOpenSettingsButton = 1;

}  // namespace

ConflictChecker::ConflictChecker(SystemPreferences& system, DefaultsStore& defaults,
                                 MainQueue& queue, Alerts& alerts, Localize localize)
    : system_(system),
      defaults_(defaults),
      queue_(queue),
      alerts_(alerts),
      localize_(std::move(localize)) {}

void ConflictChecker::checkAfterEnabling(std::string_view gestureKey) {
  const auto found = warning(gestureKey);
  if (!found) return;
  const std::string warned = keys::conflictWarned(gestureKey);
  if (defaults_.boolean(warned)) return;
  defaults_.set(warned, true);
  queue_.async([this, warning = *found] {
    const int button =
        alerts_.runModal({.message = localize_("Heads-up: possible gesture overlap"),
                          .informativeText = warning.text,
                          .buttons = {localize_("OK"), localize_("Open System Settings")},
                          .closesWithFirst = true});
    if (button == kOpenSettingsButton) {
      alerts_.openUrl("x-apple.systempreferences:" + warning.settingsPane);
    }
  });
}

std::optional<ConflictChecker::Warning> ConflictChecker::warning(
    std::string_view gestureKey) const {
  for (const Rule& rule : kRules) {
    if (rule.gestureKey != gestureKey) continue;
    if (!rule.systemKey.empty() && !isEnabled(system_, rule.systemKey, rule.domains)) break;
    return Warning{localize_(rule.explanation), std::string(rule.settingsPane)};
  }
  return std::nullopt;
}

bool ConflictChecker::isEnabled(SystemPreferences& system, std::string_view key,
                                std::span<const std::string_view> domains) {
  for (const std::string_view domain : domains) {
    const auto value = system.read(domain, key);
    if (!value) continue;
    // Systems store the same switch as a number or as a boolean, as the writer pleased.
    const std::int64_t* number = value->integer();
    const bool* boolean = value->boolean();
    if ((number != nullptr && *number != 0) || (boolean != nullptr && *boolean)) return true;
  }
  return false;
}

}  // namespace velotap
