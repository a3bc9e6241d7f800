// The five values that can be tuned: their sliders, presets, suggestions, and the undo of a change.
//
// Pure values; any thread.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "gestures/tap_activity_log.hpp"
#include "localization/texts.hpp"

namespace velotap {

struct TuningSnapshot {
  int maxTapDurationMs = 300;
  double maxTapDrift = 0.05;  ///< part of the surface
  double pinchSensitivity = 1.0;
  double centerMinX = 0.35;  ///< parts of the surface's width
  double centerMaxX = 0.65;

  friend bool operator==(const TuningSnapshot&, const TuningSnapshot&) = default;
};

/// The duration exactly, the others within 1e-9.
[[nodiscard]] bool isDefaultTuning(const TuningSnapshot& values) noexcept;

/// The last change, and how to take it back.
struct TuningUndo {
  TuningSnapshot before;
  TuningSnapshot after;

  /// Each value by itself: the old one where the change changed it and nobody has since, else the
  /// current one.
  [[nodiscard]] TuningSnapshot restoring(const TuningSnapshot& current) const noexcept;
};

enum class TuningValue { maxTapDuration, maxTapDrift, pinchSensitivity, centerMinX, centerMaxX };
enum class TuningUnit { milliseconds, multiplier, percent, twoDigits };

struct TuningSlider {
  TuningValue value = TuningValue::maxTapDuration;
  std::string_view settingsKey{};
  std::string_view titleKey{};
  double lowest = 0;
  double highest = 1;
  double step = 0.01;
  TuningUnit unit = TuningUnit::milliseconds;
  double factory = 0;
  std::string_view lowLabelKey{};
  std::string_view highLabelKey{};

  /// On the nearest step, within the range.
  [[nodiscard]] double snapped(double wanted) const noexcept;
  /// One step down or up, within the range.
  [[nodiscard]] double decremented(double current) const noexcept;
  [[nodiscard]] double incremented(double current) const noexcept;
};

/// One for each value, in the order of the enumerators.
[[nodiscard]] std::span<const TuningSlider> tuningSliders() noexcept;
[[nodiscard]] const TuningSlider& tuningSlider(TuningValue value) noexcept;

[[nodiscard]] double tuningValue(const TuningSnapshot& values, TuningValue which) noexcept;
/// The duration is cut to whole milliseconds.
void setTuningValue(TuningSnapshot& values, TuningValue which, double number) noexcept;
[[nodiscard]] std::string tuningValueText(TuningValue which, double number, const Texts& texts);

struct TapPreset {
  std::string_view titleKey{};
  int duration = 0;  ///< milliseconds
  double drift = 0;
};
/// Precise, default, relaxed.
[[nodiscard]] std::span<const TapPreset> tapPresets() noexcept;

struct CenterPreset {
  std::string_view titleKey{};
  double minimum = 0;
  double maximum = 0;
};
/// Narrow, default, wide.
[[nodiscard]] std::span<const CenterPreset> centerPresets() noexcept;

/// The limit that would have accepted a refused tap.
struct TapLimitSuggestion {
  enum class Kind { duration, drift };
  Kind kind = Kind::duration;
  int milliseconds = 0;  ///< of a duration
  double drift = 0;      ///< of a drift

  [[nodiscard]] std::string title(const Texts& texts) const;
  /// Name of the setting that it changes.
  [[nodiscard]] std::string context(const Texts& texts) const;
  friend bool operator==(const TapLimitSuggestion&, const TapLimitSuggestion&) = default;
};

/// Nothing when no limit that a slider can take would help, or one that helps is in force already.
[[nodiscard]] std::optional<TapLimitSuggestion> tapLimitSuggestion(const TapActivity& tap,
                                                                   const TuningSnapshot& current);

}  // namespace velotap
