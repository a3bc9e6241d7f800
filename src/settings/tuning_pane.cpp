#include "settings/tuning_pane.hpp"

#include <cmath>
#include <utility>

#include "config/config.hpp"
#include "config/settings_keys.hpp"
#include "config/settings_table.hpp"

namespace velotap {
namespace {

bool same(double a, double b) {
  return std::fabs(a - b) <= 1e-9;
}

bool chosen(const TapPreset& preset, const TuningSnapshot& current) {
  return preset.duration == current.maxTapDurationMs && same(preset.drift, current.maxTapDrift);
}

bool chosen(const CenterPreset& preset, const TuningSnapshot& current) {
  return same(preset.minimum, current.centerMinX) && same(preset.maximum, current.centerMaxX);
}

}  // namespace

TuningPane::TuningPane(DefaultsStore& defaults, TapActivityLog& log,
                       NotificationCenter& notifications, Announce announce, DidChange changed)
    : defaults_(defaults),
      log_(log),
      announce_(std::move(announce)),
      changed_(std::move(changed)),
      activity_(log.items()),
      touches_(log.touches()),
      taps_(notifications.observe(kTapActivityDidChange, [this] { follow(); })),
      otherTouches_(log.observeOtherTouches([this] { follow(); })) {}

void TuningPane::follow() {
  if (paused_) return;
  activity_ = log_.items();
  touches_ = log_.touches();
  if (changed_) changed_();
}

void TuningPane::setPaused(bool paused) {
  paused_ = paused;
  follow();
}

TuningSnapshot TuningPane::snapshot() const {
  TuningSnapshot values;
  for (const TuningSlider& each : tuningSliders()) {
    const SettingRow* const row = findSetting(each.settingsKey);
    const double stored = Config::storedNumber(defaults_.object(each.settingsKey), each.factory);
    setTuningValue(values, each.value, inRange(*row, stored));
  }
  return values;
}

void TuningPane::write(TuningValue value, const TuningSnapshot& values) {
  const std::string_view key = tuningSlider(value).settingsKey;
  if (value == TuningValue::maxTapDuration) {
    defaults_.set(key, values.maxTapDurationMs);
  } else {
    defaults_.set(key, tuningValue(values, value));
  }
}

// Only what differs is written, so that a value keeps following its factory value until it is
// changed.
void TuningPane::restore(const TuningSnapshot& values) {
  const TuningSnapshot current = snapshot();
  for (const TuningSlider& each : tuningSliders()) {
    if (tuningValue(values, each.value) != tuningValue(current, each.value)) {
      write(each.value, values);
    }
  }
}

void TuningPane::change(const TuningSnapshot& wanted) {
  const TuningSnapshot before = snapshot();
  restore(wanted);
  undo_ = TuningUndo{.before = before, .after = snapshot()};
  announce_("Tuning updated");
}

void TuningPane::moveSlider(TuningValue value, double number) {
  set(value, tuningSlider(value).snapped(number));
}

void TuningPane::set(TuningValue value, double number) {
  TuningSnapshot values = snapshot();
  setTuningValue(values, value, number);
  write(value, values);
}

// A value between two steps stays between two.
void TuningPane::decrement(TuningValue value) {
  set(value, tuningSlider(value).decremented(tuningValue(snapshot(), value)));
}

void TuningPane::increment(TuningValue value) {
  set(value, tuningSlider(value).incremented(tuningValue(snapshot(), value)));
}

void TuningPane::reset(TuningValue value) {
  set(value, tuningSlider(value).factory);
}

void TuningPane::applyPreset(int duration, double drift) {
  TuningSnapshot wanted = snapshot();
  wanted.maxTapDurationMs = duration;
  wanted.maxTapDrift = drift;
  change(wanted);
}

void TuningPane::applyCenter(double minimum, double maximum) {
  TuningSnapshot wanted = snapshot();
  wanted.centerMinX = minimum;
  wanted.centerMaxX = maximum;
  change(wanted);
}

void TuningPane::restoreDefaults() {
  change(TuningSnapshot{});
}

void TuningPane::apply(const TapLimitSuggestion& suggestion) {
  TuningSnapshot wanted = snapshot();
  if (suggestion.kind == TapLimitSuggestion::Kind::duration) {
    wanted.maxTapDurationMs = suggestion.milliseconds;
  } else {
    wanted.maxTapDrift = suggestion.drift;
  }
  change(wanted);
}

void TuningPane::undo() {
  if (!undo_) return;
  restore(undo_->restoring(snapshot()));
  undo_.reset();
  announce_("Tuning restored");
}

void TuningPane::turnOnPinchZoom() {
  defaults_.set(keys::kMousePinchZoom, true);
}

TuningPane::Evidence TuningPane::evidence(TuningValue value, const TuningSnapshot& current) const {
  switch (value) {
    case TuningValue::maxTapDuration:
    case TuningValue::maxTapDrift:
      return {"tuning.evidence",
              replayTaps(touches_.taps, {.duration = current.maxTapDurationMs / 1000.0,
                                         .drift = current.maxTapDrift})};
    case TuningValue::pinchSensitivity:
      return {"tuning.evidence.pinch", replayPinches(touches_.pinches, current.pinchSensitivity)};
    case TuningValue::centerMinX:
    case TuningValue::centerMaxX:
      break;
  }
  return {"tuning.evidence.center",
          replayClicks(touches_.clicks,
                       Config::validatedCenterBand(current.centerMinX, current.centerMaxX))};
}

std::string TuningPane::evidenceText(TuningValue value, const TuningSnapshot& current,
                                     const Texts& texts) const {
  const Evidence told = evidence(value, current);
  if (told.touches.total == 0) return {};
  return texts(told.key, {texts.format().wholeNumber(told.touches.accepted),
                          texts.format().wholeNumber(told.touches.total)});
}

TuningSliderView TuningPane::slider(TuningValue value, const TuningSnapshot& current,
                                    const Texts& texts) const {
  const TuningSlider& definition = tuningSlider(value);
  const double number = tuningValue(current, value);
  const std::string title = texts(definition.titleKey);
  return {.value = value,
          .title = title,
          .number = number,
          .lowest = definition.lowest,
          .highest = definition.highest,
          .step = definition.step,
          .text = tuningValueText(value, number, texts),
          .lowLabel = texts(definition.lowLabelKey),
          .highLabel = texts(definition.highLabelKey),
          .evidence = evidenceText(value, current, texts),
          .fineTitle = texts("design.fine.adjust"),
          .decreaseLabel = texts("design.fine.decrease", {title}),
          .canDecrease = number > definition.lowest,
          .increaseLabel = texts("design.fine.increase", {title}),
          .canIncrease = number < definition.highest,
          .resetTitle = texts("design.reset.setting"),
          .resetLabel = texts("design.reset.named", {title}),
          .canReset = number != definition.factory};
}

void TuningPane::addTapSection(const TuningSnapshot& current, const Texts& texts,
                               TuningView& view) const {
  view.tapTitle = texts("Tap detection");
  view.presetsTitle = texts("design.tap.presets");
  view.presetsNote = texts("design.tap.presets.note");
  for (const TapPreset& preset : tapPresets()) {
    view.presets.push_back({texts(preset.titleKey), chosen(preset, current)});
  }
  view.duration = slider(TuningValue::maxTapDuration, current, texts);
  view.durationCaption = texts("duration.caption");
  view.drift = slider(TuningValue::maxTapDrift, current, texts);
  view.driftCaption = texts("drift.caption");
  const bool anyTap = defaults_.boolean(keys::kMouseTap3) || defaults_.boolean(keys::kPadTap3) ||
                      defaults_.boolean(keys::kPadTap4);
  if (!anyTap) view.tapNote = {texts("tuning.taps.off"), texts("Open Gestures")};
}

void TuningPane::addZoomAndCenter(const TuningSnapshot& current, const Texts& texts,
                                  TuningView& view) const {
  view.pinchTitle = texts("Pinch to zoom");
  view.sensitivity = slider(TuningValue::pinchSensitivity, current, texts);
  view.sensitivityCaption = texts("pinch.caption");
  if (!defaults_.boolean(keys::kMousePinchZoom)) {
    view.pinchNote = {texts("tuning.pinch.off"), texts("Turn On")};
  }
  view.centerTitle = texts("One-finger center click band");
  view.centerWidthTitle = texts("refine.center.width");
  view.centerCaption = texts("center.caption");
  view.centerPresetsNote = texts("polish.center.presets.note");
  for (const CenterPreset& preset : velotap::centerPresets()) {
    view.centerPresets.push_back({texts(preset.titleKey), chosen(preset, current)});
  }
  view.leftEdge = slider(TuningValue::centerMinX, current, texts);
  view.rightEdge = slider(TuningValue::centerMaxX, current, texts);
  view.centerLabel = texts("center.preview.label", {view.leftEdge.text, view.rightEdge.text});
  if (!defaults_.boolean(keys::kMouseClick1Center)) {
    view.centerNote = {texts("tuning.center.off"), {}};
  }
}

void TuningPane::addUndo(const Texts& texts, TuningView& view) const {
  if (!undo_) return;
  view.undoTitle = texts("Undo");
  view.compareNote = texts("polish.tuning.compare.note");
  for (const TuningSlider& each : tuningSliders()) {
    const double before = tuningValue(undo_->before, each.value);
    const double after = tuningValue(undo_->after, each.value);
    if (before == after) continue;
    view.comparison.push_back(
        texts("polish.tuning.compare.row",
              {texts(each.titleKey), tuningValueText(each.value, before, texts),
               tuningValueText(each.value, after, texts)}));
  }
}

TuningView TuningPane::view(const Texts& texts) const {
  const TuningSnapshot current = snapshot();
  TuningView view;
  view.introTitle = texts("Tuning");
  view.introText = texts("refine.tuning.intro");
  view.isDefault = velotap::isDefaultTuning(current);
  view.state = texts(view.isDefault ? "refine.tuning.default" : "refine.tuning.custom");
  view.stateSymbol = view.isDefault ? "checkmark.seal" : "slider.horizontal.3";
  addTapSection(current, texts, view);
  addZoomAndCenter(current, texts, view);
  view.restoreTitle = texts("Restore Default Tuning");
  view.canRestore = !view.isDefault;
  addUndo(texts, view);
  view.taps = recentTapsView(activity_, filter_, paused_, current, texts);
  return view;
}

}  // namespace velotap
