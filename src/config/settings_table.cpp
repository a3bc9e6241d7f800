#include "config/settings_table.hpp"

#include <array>

namespace velotap {
namespace {

using Type = SettingType;

constexpr std::array kTable = {
    // What the program does at all, and for whom.
    SettingRow{"enabled",
               Type::boolean,
               true,
               1,
               {},
               {},
               "Master switch: gestures and click conversion are active"},
    SettingRow{"leftClickTogglesEnabled",
               Type::boolean,
               true,
               1,
               {},
               {},
               "A left click on the status item toggles the master switch instead of opening the "
               "menu"},
    SettingRow{"hideStatusBarIcon", Type::boolean, true, 0, {}, {}, "The status item is not shown"},
    SettingRow{"pinchSensitivity", Type::real, true, 1.0, 0.1, 5.0,
               "Multiplier for pinch and rotation"},
    SettingRow{"maxTapDurationMs", Type::integer, true, 300, 50, 2000,
               "Longest touch that still counts as a tap, in milliseconds"},
    SettingRow{"maxTapDrift", Type::real, true, 0.05, 0, 1,
               "Farthest that a finger may stray in a tap, in parts of the surface"},
    SettingRow{"centerMinX", Type::real, true, 0.35, 0, 1,
               "Left edge of the centre band for the one-finger centre click"},
    SettingRow{"centerMaxX", Type::real, true, 0.65, 0, 1,
               "Right edge of the centre band for the one-finger centre click"},
    SettingRow{"ignoredApps",
               Type::texts,
               true,
               0,
               {},
               {},
               "Identifiers of applications in which the program does nothing"},
    SettingRow{"keystrokeZoomApps",
               Type::texts,
               true,
               0,
               {},
               {},
               "Identifiers of applications that get pinch zoom as keystrokes"},
    // Triggers, in the order of their enumeration.
    SettingRow{"mouseClick1Center",
               Type::boolean,
               true,
               0,
               {},
               {},
               "Magic Mouse: a click with one finger in the centre band becomes a middle click"},
    SettingRow{"mouseClick2",
               Type::boolean,
               true,
               0,
               {},
               {},
               "Magic Mouse: a click with two fingers becomes a middle click"},
    SettingRow{"mouseClick3",
               Type::boolean,
               true,
               1,
               {},
               {},
               "Magic Mouse: a click with three fingers becomes a middle click"},
    SettingRow{"mouseTap3",
               Type::boolean,
               true,
               1,
               {},
               {},
               "Magic Mouse: a tap with three fingers posts a middle click"},
    SettingRow{"padClick3",
               Type::boolean,
               true,
               1,
               {},
               {},
               "Trackpad: a click with three fingers becomes a middle click"},
    SettingRow{"padTap3",
               Type::boolean,
               true,
               1,
               {},
               {},
               "Trackpad: a tap with three fingers posts a middle click"},
    SettingRow{"padTap4",
               Type::boolean,
               true,
               0,
               {},
               {},
               "Trackpad: a tap with four fingers posts a middle click"},
    SettingRow{
        "mousePinchZoom", Type::boolean, true, 1, {}, {}, "Magic Mouse: a two-finger pinch zooms"},
    SettingRow{
        "mouseRotate", Type::boolean, true, 0, {}, {}, "Magic Mouse: turning two fingers rotates"},
    SettingRow{"mouseSwipe3Nav",
               Type::boolean,
               true,
               0,
               {},
               {},
               "Magic Mouse: a horizontal three-finger swipe posts Back or Forward"},
    // Remembered by the program itself; nothing is registered for these.
    SettingRow{"accessibilitySetupPresented",
               Type::boolean,
               false,
               0,
               {},
               {},
               "The set-up of the permission was shown once"},
    SettingRow{"settings.gestureDevice",
               Type::text,
               false,
               0,
               {},
               {},
               "Device whose gestures the settings window shows: mouse or trackpad"},
    SettingRow{"settings.appRuleSort",
               Type::text,
               false,
               0,
               {},
               {},
               "Sort order of the list of application rules"},
    SettingRow{"settings.appRuleDetails",
               Type::boolean,
               false,
               1,
               {},
               {},
               "The list of application rules shows details"},
    SettingRow{"lowercaseIdentityMigrationCompleted",
               Type::boolean,
               false,
               0,
               {},
               {},
               "The preferences of the former identity were merged"},
};

constexpr std::size_t kFirstTrigger = 10;
static_assert(kTable[kFirstTrigger].key == "mouseClick1Center");
static_assert(kTable[kFirstTrigger + kTriggerCount - 1].key == "mouseSwipe3Nav");

Value factoryValue(const SettingRow& row) {
  switch (row.type) {
    case Type::boolean:
      return row.factory != 0;
    case Type::integer:
      return static_cast<std::int64_t>(row.factory);
    case Type::real:
      return row.factory;
    case Type::text:
      return "";
    case Type::texts:
      return ValueArray();
  }
  return false;
}

}  // namespace

std::span<const SettingRow> settingsTable() noexcept {
  return kTable;
}

ValueMap factorySettings() {
  ValueMap factory;
  for (const SettingRow& row : kTable) {
    if (row.registered) factory.emplace(row.key, factoryValue(row));
  }
  return factory;
}

std::span<const SettingRow> triggerTable() noexcept {
  return std::span<const SettingRow>(kTable).subspan(kFirstTrigger, kTriggerCount);
}

std::string_view triggerKey(Trigger trigger) noexcept {
  return triggerTable()[static_cast<std::size_t>(trigger)].key;
}

}  // namespace velotap
