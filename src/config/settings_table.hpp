// Every setting of the program in one table: key, type, factory value, range and meaning.
//
// Registration, clamping, the documentation in docs/settings.md and the settings window derive from
// it, so a setting that is not here does not exist. Pure data; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "base/value.hpp"

namespace velotap {

enum class SettingType { boolean, integer, real, text, texts };

struct SettingRow {
  std::string_view key;
  SettingType type = SettingType::boolean;
  bool registered = true;         ///< has a factory value in the registration domain
  double factory = 0;             ///< of numbers; of booleans 0 or 1; lists and texts start empty
  std::optional<double> lowest;   ///< inclusive, in the stored unit
  std::optional<double> highest;  ///< inclusive, in the stored unit
  std::string_view meaning;
};

[[nodiscard]] std::span<const SettingRow> settingsTable() noexcept;

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
