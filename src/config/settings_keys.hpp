// The keys of the settings store, each spelled once.
//
// What a key holds, its factory value and its range are in settings_table.hpp.
#pragma once

#include <string>
#include <string_view>

namespace velotap::keys {

inline constexpr std::string_view kEnabled = "enabled";
inline constexpr std::string_view kLeftClickTogglesEnabled = "leftClickTogglesEnabled";
inline constexpr std::string_view kHideStatusBarIcon = "hideStatusBarIcon";

inline constexpr std::string_view kPinchSensitivity = "pinchSensitivity";
inline constexpr std::string_view kMaxTapDurationMs = "maxTapDurationMs";
inline constexpr std::string_view kMaxTapDrift = "maxTapDrift";
inline constexpr std::string_view kCenterMinX = "centerMinX";
inline constexpr std::string_view kCenterMaxX = "centerMaxX";

inline constexpr std::string_view kIgnoredApps = "ignoredApps";
inline constexpr std::string_view kKeystrokeZoomApps = "keystrokeZoomApps";

inline constexpr std::string_view kMouseClick1Center = "mouseClick1Center";
inline constexpr std::string_view kMouseClick2 = "mouseClick2";
inline constexpr std::string_view kMouseClick3 = "mouseClick3";
inline constexpr std::string_view kMouseTap3 = "mouseTap3";
inline constexpr std::string_view kPadClick3 = "padClick3";
inline constexpr std::string_view kPadTap3 = "padTap3";
inline constexpr std::string_view kPadTap4 = "padTap4";
inline constexpr std::string_view kMousePinchZoom = "mousePinchZoom";
inline constexpr std::string_view kMouseRotate = "mouseRotate";
inline constexpr std::string_view kMouseSwipe3Nav = "mouseSwipe3Nav";

inline constexpr std::string_view kPadThreeFingerMode = "padThreeFingerMode";

inline constexpr std::string_view kAccessibilitySetupPresented = "accessibilitySetupPresented";
inline constexpr std::string_view kGestureDevice = "settings.gestureDevice";
inline constexpr std::string_view kAppRuleSort = "settings.appRuleSort";
inline constexpr std::string_view kAppRuleDetails = "settings.appRuleDetails";
inline constexpr std::string_view kIdentityMigrationCompleted =
    "lowercaseIdentityMigrationCompleted";

/// One key for each trigger: this and the trigger's key.
inline constexpr std::string_view kConflictWarnedPrefix = "conflictWarned.";

[[nodiscard]] inline std::string conflictWarned(std::string_view triggerKey) {
  return std::string(kConflictWarnedPrefix).append(triggerKey);
}

}  // namespace velotap::keys
