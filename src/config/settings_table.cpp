#include "config/settings_table.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

using Fallback = SettingFallback;
using Type = SettingType;

constexpr SettingRow flag(std::string_view key, bool factory, std::string_view meaning) {
  return {.key = key, .factoryNumber = factory ? 1.0 : 0.0, .meaning = meaning};
}

constexpr SettingRow number(std::string_view key, Type type, double factory, SettingRange range,
                            std::string_view meaning) {
  return {.key = key, .type = type, .factoryNumber = factory, .range = range, .meaning = meaning};
}

constexpr SettingRow list(std::string_view key, std::string_view meaning) {
  return {.key = key, .type = Type::texts, .meaning = meaning};
}

constexpr SettingRow memory(std::string_view key, Type type, std::string_view meaning) {
  return {.key = key, .type = type, .fallback = Fallback::none, .meaning = meaning};
}

constexpr std::array kTable = {
    // What the program does at all, and for whom.
    flag(keys::kEnabled, true, "Master switch: gestures and click conversion are active"),
    flag(keys::kLeftClickTogglesEnabled, true,
         "A left click on the status item toggles the master switch instead of opening the menu"),
    flag(keys::kHideStatusBarIcon, false, "The status item is not shown"),
    number(keys::kPinchSensitivity, Type::real, 1.0, {0.1, 5.0},
           "Multiplier for pinch and rotation"),
    number(keys::kMaxTapDurationMs, Type::integer, 300, {50, 2000},
           "Longest touch that still counts as a tap, in milliseconds"),
    number(keys::kMaxTapDrift, Type::real, 0.05, {0, 1},
           "Farthest that a finger may stray in a tap, in parts of the surface"),
    number(keys::kCenterMinX, Type::real, 0.35, {0, 1},
           "Left edge of the centre band for the one-finger centre click"),
    number(keys::kCenterMaxX, Type::real, 0.65, {0, 1},
           "Right edge of the centre band for the one-finger centre click"),
    list(keys::kIgnoredApps, "Identifiers of applications in which the program does nothing"),
    list(keys::kKeystrokeZoomApps, "Identifiers of applications that get pinch zoom as keystrokes"),
    // Triggers, in the order of their enumeration.
    flag(keys::kMouseClick1Center, false,
         "Magic Mouse: a click with one finger in the centre band becomes a middle click"),
    flag(keys::kMouseClick2, false, "Magic Mouse: a click with two fingers becomes a middle click"),
    flag(keys::kMouseClick3, true,
         "Magic Mouse: a click with three fingers becomes a middle click"),
    flag(keys::kMouseTap3, true, "Magic Mouse: a tap with three fingers posts a middle click"),
    flag(keys::kPadClick3, true, "Trackpad: a click with three fingers becomes a middle click"),
    flag(keys::kPadTap3, true, "Trackpad: a tap with three fingers posts a middle click"),
    flag(keys::kPadTap4, false, "Trackpad: a tap with four fingers posts a middle click"),
    flag(keys::kMousePinchZoom, true, "Magic Mouse: a two-finger pinch zooms"),
    flag(keys::kMouseRotate, false, "Magic Mouse: turning two fingers rotates"),
    flag(keys::kMouseSwipe3Nav, false,
         "Magic Mouse: a horizontal three-finger swipe posts Back or Forward"),
    // Not registered: whatever is no known mode, a missing one included, is the automatic one.
    SettingRow{.key = keys::kPadThreeFingerMode,
               .type = Type::text,
               .fallback = Fallback::declared,
               .factoryText = "automatic",
               .meaning = "Trackpad: who answers three fingers: the desktop (native), the program "
                          "(post), or the desktop where it does so by itself (automatic)"},
    // Remembered by the program itself; nothing is registered for these.
    memory(keys::kAccessibilitySetupPresented, Type::boolean,
           "The set-up of the permission was shown once"),
    memory(keys::kGestureDevice, Type::text,
           "Device whose gestures the settings window shows: mouse or trackpad"),
    SettingRow{.key = keys::kAppRuleSort,
               .type = Type::text,
               .fallback = Fallback::declared,
               .factoryText = "name",
               .meaning = "Sort order of the list of application rules: name or identifier"},
    SettingRow{.key = keys::kAppRuleDetails,
               .fallback = Fallback::declared,
               .factoryNumber = 1,
               .meaning = "The list of application rules shows identifiers under the names"},
    memory(keys::kIdentityMigrationCompleted, Type::boolean,
           "The preferences of the former identity were merged"),
};

constexpr std::size_t kFirstTrigger = 10;
static_assert(kTable[kFirstTrigger].key == keys::kMouseClick1Center);
static_assert(kTable[kFirstTrigger + kTriggerCount - 1].key == keys::kMouseSwipe3Nav);

}  // namespace

std::span<const SettingRow> settingsTable() noexcept {
  return kTable;
}

const SettingRow* findSetting(std::string_view key) noexcept {
  const auto found = std::find_if(kTable.begin(), kTable.end(),
                                  [key](const SettingRow& row) { return row.key == key; });
  return found != kTable.end() ? &*found : nullptr;
}

std::optional<Value> factoryValue(const SettingRow& row) {
  if (row.fallback == Fallback::none) return std::nullopt;
  switch (row.type) {
    case Type::boolean:
      return row.factoryNumber != 0;
    case Type::integer:
      return static_cast<std::int64_t>(row.factoryNumber);
    case Type::real:
      return row.factoryNumber;
    case Type::text:
      return std::string(row.factoryText);
    case Type::texts:
      return ValueArray();
  }
  return std::nullopt;
}

double inRange(const SettingRow& row, double value) noexcept {
  if (!std::isfinite(value)) return row.factoryNumber;
  return row.range ? std::clamp(value, row.range->lowest, row.range->highest) : value;
}

ValueMap factorySettings() {
  ValueMap factory;
  for (const SettingRow& row : kTable) {
    if (row.fallback == Fallback::registered) factory.emplace(row.key, *factoryValue(row));
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
