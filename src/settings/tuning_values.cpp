#include "settings/tuning_values.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

constexpr double kSameValue = 1e-9;
constexpr TuningSnapshot kFactory;

constexpr std::array kSliders = {
    TuningSlider{TuningValue::maxTapDuration, keys::kMaxTapDurationMs, "Max tap duration", 150, 500,
                 10, TuningUnit::milliseconds, kFactory.maxTapDurationMs, "Shorter taps",
                 "Longer taps"},
    TuningSlider{TuningValue::maxTapDrift, keys::kMaxTapDrift, "Finger drift tolerance", 0.02, 0.15,
                 0.01, TuningUnit::twoDigits, kFactory.maxTapDrift, "Less movement",
                 "More movement"},
    TuningSlider{TuningValue::pinchSensitivity, keys::kPinchSensitivity, "Sensitivity", 0.3, 3.0,
                 0.1, TuningUnit::multiplier, kFactory.pinchSensitivity, "Slower zoom",
                 "Faster zoom"},
    TuningSlider{TuningValue::centerMinX, keys::kCenterMinX, "Left edge", 0.1, 0.5, 0.01,
                 TuningUnit::percent, kFactory.centerMinX, "Left", "Right"},
    TuningSlider{TuningValue::centerMaxX, keys::kCenterMaxX, "Right edge", 0.5, 0.9, 0.01,
                 TuningUnit::percent, kFactory.centerMaxX, "Left", "Right"},
};

constexpr std::array kTapPresets = {TapPreset{"design.preset.precise", 220, 0.03},
                                    TapPreset{"design.preset.default", 300, 0.05},
                                    TapPreset{"design.preset.relaxed", 380, 0.08}};

constexpr std::array kCenterPresets = {CenterPreset{"polish.center.narrow", 0.4, 0.6},
                                       CenterPreset{"design.preset.default", 0.35, 0.65},
                                       CenterPreset{"polish.center.wide", 0.2, 0.8}};

// Sums of steps gather rounding errors; a value that is written is the nearest to its decimals.
double clean(double value) {
  return std::round(value * 1e6) / 1e6;
}

}  // namespace

bool isDefaultTuning(const TuningSnapshot& values) noexcept {
  const auto same = [](double a, double b) { return std::fabs(a - b) <= kSameValue; };
  return values.maxTapDurationMs == kFactory.maxTapDurationMs &&
         same(values.maxTapDrift, kFactory.maxTapDrift) &&
         same(values.pinchSensitivity, kFactory.pinchSensitivity) &&
         same(values.centerMinX, kFactory.centerMinX) &&
         same(values.centerMaxX, kFactory.centerMaxX);
}

TuningSnapshot TuningUndo::restoring(const TuningSnapshot& current) const noexcept {
  TuningSnapshot result = current;
  for (const TuningSlider& slider : kSliders) {
    const double old = tuningValue(before, slider.value);
    const double changed = tuningValue(after, slider.value);
    if (old != changed && tuningValue(current, slider.value) == changed) {
      setTuningValue(result, slider.value, old);
    }
  }
  return result;
}

double TuningSlider::snapped(double wanted) const noexcept {
  if (!std::isfinite(wanted)) return factory;
  const double steps = std::round((wanted - lowest) / step);
  return std::clamp(clean(lowest + steps * step), lowest, highest);
}

double TuningSlider::decremented(double current) const noexcept {
  return std::clamp(clean(current - step), lowest, highest);
}

double TuningSlider::incremented(double current) const noexcept {
  return std::clamp(clean(current + step), lowest, highest);
}

std::span<const TuningSlider> tuningSliders() noexcept {
  return kSliders;
}

const TuningSlider& tuningSlider(TuningValue value) noexcept {
  return kSliders.at(static_cast<std::size_t>(value));
}

double tuningValue(const TuningSnapshot& values, TuningValue which) noexcept {
  switch (which) {
    case TuningValue::maxTapDuration:
      return values.maxTapDurationMs;
    case TuningValue::maxTapDrift:
      return values.maxTapDrift;
    case TuningValue::pinchSensitivity:
      return values.pinchSensitivity;
    case TuningValue::centerMinX:
      return values.centerMinX;
    case TuningValue::centerMaxX:
      break;
  }
  return values.centerMaxX;
}

void setTuningValue(TuningSnapshot& values, TuningValue which, double number) noexcept {
  switch (which) {
    case TuningValue::maxTapDuration:
      values.maxTapDurationMs = static_cast<int>(number);
      break;
    case TuningValue::maxTapDrift:
      values.maxTapDrift = number;
      break;
    case TuningValue::pinchSensitivity:
      values.pinchSensitivity = number;
      break;
    case TuningValue::centerMinX:
      values.centerMinX = number;
      break;
    case TuningValue::centerMaxX:
      values.centerMaxX = number;
      break;
  }
}

std::string tuningValueText(TuningValue which, double number, const Texts& texts) {
  const RegionalFormat& format = texts.format();
  switch (tuningSlider(which).unit) {
    case TuningUnit::milliseconds:
      return format.milliseconds(static_cast<std::int64_t>(number));
    case TuningUnit::multiplier:
      return format.multiplier(number);
    case TuningUnit::percent:
      return format.percent(number);
    case TuningUnit::twoDigits:
      break;
  }
  return format.number(number, 2);
}

std::span<const TapPreset> tapPresets() noexcept {
  return kTapPresets;
}

std::span<const CenterPreset> centerPresets() noexcept {
  return kCenterPresets;
}

std::string TapLimitSuggestion::title(const Texts& texts) const {
  return texts("Allow %@", {kind == Kind::duration ? texts.format().milliseconds(milliseconds)
                                                   : texts.format().number(drift, 2)});
}

std::string TapLimitSuggestion::context(const Texts& texts) const {
  return texts(kind == Kind::duration ? "Max tap duration" : "Finger drift tolerance");
}

std::optional<TapLimitSuggestion> tapLimitSuggestion(const TapActivity& tap,
                                                     const TuningSnapshot& current) {
  using Kind = TapLimitSuggestion::Kind;
  const auto within = [](double needed, const TuningSlider& slider) {
    return needed >= slider.lowest && needed <= slider.highest;
  };
  if (tap.outcome == TapActivity::Outcome::tooLong) {
    const double needed = std::ceil(tap.duration * 1000 / 10) * 10;
    if (!within(needed, tuningSlider(TuningValue::maxTapDuration))) return std::nullopt;
    if (current.maxTapDurationMs >= needed) return std::nullopt;
    return TapLimitSuggestion{.kind = Kind::duration, .milliseconds = static_cast<int>(needed)};
  }
  if (tap.outcome == TapActivity::Outcome::moved) {
    const double needed = std::ceil(tap.drift * 100) / 100;
    if (!within(needed, tuningSlider(TuningValue::maxTapDrift))) return std::nullopt;
    if (current.maxTapDrift + kSameValue >= needed) return std::nullopt;
    return TapLimitSuggestion{.kind = Kind::drift, .drift = needed};
  }
  return std::nullopt;
}

}  // namespace velotap
