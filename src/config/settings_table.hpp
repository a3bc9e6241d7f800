// Every setting of the program in one table: key, type, factory value, range and meaning.
//
// Registration, clamping, docs/settings.md and the settings window derive from it, so a setting
// that is not here does not exist. Only the keys that remember which gesture was warned of
// (`keys::conflictWarned`) have no rows of their own: they follow from the triggers. Pure data; any
// thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "base/value.hpp"

namespace velotap {

enum class SettingType : std::uint8_t { boolean, integer, real, text, texts };

/// What stands in for a setting that nothing is stored for.
enum class SettingFallback : std::uint8_t {
  registered,  ///< its factory value, from the registration domain: every reader sees it
  declared,    ///< its factory value, for the settings window, which states it when it reads
  none,        ///< nothing: reads as false or as no value
};

/// Inclusive, in the unit that is stored.
struct SettingRange {
  double lowest = 0;
  double highest = 0;
};

struct SettingRow {
  std::string_view key{};
  SettingType type = SettingType::boolean;
  SettingFallback fallback = SettingFallback::registered;
  double factoryNumber = 0;        ///< of numbers; of booleans 0 or 1
  std::string_view factoryText{};  ///< of texts; lists start empty
  std::optional<SettingRange> range{};
  std::string_view meaning{};
};

[[nodiscard]] std::span<const SettingRow> settingsTable() noexcept;

/// The row with this key; nullptr when there is none.
[[nodiscard]] const SettingRow* findSetting(std::string_view key) noexcept;

/// Nothing for a setting without any.
[[nodiscard]] std::optional<Value> factoryValue(const SettingRow& row);

/// A number that was read for this setting, brought into its range; the factory number when it is
/// not finite.
[[nodiscard]] double inRange(const SettingRow& row, double value) noexcept;

/// The factory values of all registered settings.
[[nodiscard]] ValueMap factorySettings();

/// Gestures that can be switched, in the order of the table's trigger rows.
enum class Trigger : std::uint8_t {
  mouseClick1Center,
  mouseClick2,
  mouseClick3,
  mouseTap3,
  padClick3,
  padTap3,
  padTap4,
  mousePinchZoom,
  mouseRotate,
  mouseSwipe3Nav,
};
inline constexpr std::size_t kTriggerCount = 10;

/// The trigger's rows of the table; element i belongs to the trigger with value i.
[[nodiscard]] std::span<const SettingRow> triggerTable() noexcept;

[[nodiscard]] std::string_view triggerKey(Trigger trigger) noexcept;

}  // namespace velotap
