#include "settings/window/tuning_object.hpp"

#include <cstdlib>
#include <optional>
#include <utility>

#include "settings/center_band_preview.hpp"
#include "settings/window/values.hpp"

namespace velotap {
namespace {

constexpr const char* kNewest = "newest";
constexpr const char* kOldest = "oldest";

std::optional<TuningValue> valueOf(int slider) {
  if (slider < 0 || static_cast<std::size_t>(slider) >= tuningSliders().size()) {
    return std::nullopt;
  }
  return static_cast<TuningValue>(slider);
}

// The tracks of the edges lie below the places on the picture of the band that they stand for.
QVariantMap sliderRow(const TuningSliderView& slider, const std::string& caption) {
  const bool left = slider.value == TuningValue::centerMinX;
  const bool edge = left || slider.value == TuningValue::centerMaxX;
  return fields({{"id", static_cast<int>(slider.value)},
                 {"title", slider.title},
                 {"caption", caption},
                 {"evidence", slider.evidence},
                 {"value", slider.number},
                 {"from", slider.lowest},
                 {"to", slider.highest},
                 {"step", slider.step},
                 {"begins", edge ? slider.lowest : 0.0},
                 {"ends", edge ? slider.highest : 1.0},
                 {"fillsAfter", left},
                 {"valueText", slider.text},
                 {"low", slider.lowLabel},
                 {"high", slider.highLabel},
                 {"less", slider.decreaseLabel},
                 {"more", slider.increaseLabel},
                 {"fine", slider.fineTitle},
                 {"reset", slider.resetTitle},
                 {"resetNamed", slider.resetLabel},
                 {"resettable", slider.canReset}});
}

QVariantMap tapRow(const TapActivityRow& tap) {
  return fields({{"id", tap.id},
                 {"outcome", tap.outcome},
                 {"detail", tap.device + " · " + tap.fingers + " · " + tap.time},
                 {"accepted", tap.accepted},
                 {"suggestion", tap.suggestionTitle},
                 {"suggestionHelp", tap.suggestionContext}});
}

// Presets are known by their place in the list.
QVariantMap presetsState(const std::string& title, const std::string& note,
                         const std::vector<TuningPresetView>& presets) {
  QVariantList options;
  std::string chosen;
  for (std::size_t i = 0; i < presets.size(); ++i) {
    options.append(choice(std::to_string(i), presets[i].title));
    if (presets[i].chosen) chosen = std::to_string(i);
  }
  return fields({{"title", title}, {"note", note}, {"options", options}, {"value", chosen}});
}

QVariantMap edge(const TuningSliderView& slider) {
  return fields({{"id", static_cast<int>(slider.value)},
                 {"title", slider.title},
                 {"valueText", slider.text},
                 {"value", slider.number},
                 {"from", slider.lowest},
                 {"to", slider.highest}});
}

QVariantMap picker(const char* id, const std::string& title, std::string_view value,
                   const QVariantList& options) {
  return fields({{"id", id}, {"title", title}, {"value", value}, {"options", options}});
}

QVariantList choices(const std::vector<std::pair<std::string_view, std::string>>& pairs) {
  QVariantList list;
  for (const auto& [value, label] : pairs) list.append(choice(value, label));
  return list;
}

std::string joined(const std::vector<std::string>& lines, const char* separator) {
  std::string text;
  for (const std::string& line : lines) {
    if (!text.empty()) text += separator;
    text += line;
  }
  return text;
}

}  // namespace

TuningObject::TuningObject(TuningEffects effects, QObject* parent)
    : PaneObject(parent),
      effects_(std::move(effects)),
      pane_(effects_.defaults, effects_.log, effects_.notifications, effects_.announce,
            [this] { refresh(); }) {
  refresh();
}

void TuningObject::refresh() {
  const Texts texts = effects_.texts();
  view_ = pane_.view(texts);
  showRows();
  const TuningSnapshot now = pane_.snapshot();
  const CenterBandPreview band = centerBandPreview(now.centerMinX, now.centerMaxX, 1);
  const std::string compared = joined(view_.comparison, "\n");
  setState(fields(
      {{"intro", fields({{"title", view_.introTitle}, {"text", view_.introText}})},
       {"summary", fields({{"symbol", view_.stateSymbol},
                           {"text", view_.state},
                           {"isDefault", view_.isDefault},
                           {"restore", view_.canRestore ? view_.restoreTitle : std::string()}})},
       {"undo", fields({{"shown", !view_.undoTitle.empty()},
                        {"text", compared.empty() ? view_.compareNote
                                                  : view_.compareNote + "\n" + compared},
                        {"action", view_.undoTitle}})},
       {"tap",
        fields({{"title", view_.tapTitle},
                {"presets", presetsState(view_.presetsTitle, view_.presetsNote, view_.presets)},
                {"off", view_.tapNote.text},
                {"offAction", view_.tapNote.actionTitle}})},
       {"taps", tapsState(texts)},
       {"pinch", fields({{"title", view_.pinchTitle},
                         {"off", view_.pinchNote.text},
                         {"offAction", view_.pinchNote.actionTitle}})},
       {"center", fields({{"title", view_.centerTitle},
                          {"caption", view_.centerCaption},
                          {"off", view_.centerNote.text},
                          {"width", view_.centerWidthTitle},
                          {"label", view_.centerLabel},
                          {"left", edge(view_.leftEdge)},
                          {"right", edge(view_.rightEdge)},
                          {"presets", presetsState(view_.centerWidthTitle, view_.centerPresetsNote,
                                                   view_.centerPresets)},
                          {"from", band.x},
                          {"to", band.x + band.width}})}}));
}

QVariantMap TuningObject::tapsState(const Texts&) const {
  const RecentTapsView& taps = view_.taps;
  QVariantList lines;
  for (const std::string& line : {taps.shownCount, taps.summary}) {
    if (!line.empty()) lines.append(qt(line));
  }
  return fields({{"title", taps.title},
                 {"caption", taps.liveCaption + " " + taps.recentCaption},
                 {"clear", taps.clearTitle},
                 {"canClear", taps.canClear},
                 {"pause", taps.pauseTitle},
                 {"paused", pane_.paused()},
                 {"pausedNote", taps.pausedNote},
                 {"filter", fields({{"title", taps.filters.title},
                                    {"active", pane_.filter().activeCount()},
                                    {"reset", taps.filters.resetTitle},
                                    {"pickers", pickers()}})},
                 {"lines", lines},
                 {"reasons", fields({{"title", taps.reasonsTitle},
                                     {"note", taps.reasonsNote},
                                     {"options", choices(taps.reasonChoices)},
                                     {"value", pane_.filter().reason}})},
                 {"empty", taps.empty},
                 {"emptySymbol", taps.emptySymbol},
                 {"more", taps.moreTitle}});
}

QVariantList TuningObject::pickers() const {
  const RecentTapsView& taps = view_.taps;
  const TapActivityFilter& filter = pane_.filter();
  QVariantList orders;
  for (const auto& [newest, label] : taps.orderChoices) {
    orders.append(choice(newest ? kNewest : kOldest, label));
  }
  return {picker("device", taps.deviceTitle, filter.device, choices(taps.deviceChoices)),
          picker("outcome", taps.outcomeTitle, filter.outcome, choices(taps.outcomeChoices)),
          picker("order", taps.orderTitle, filter.newestFirst ? kNewest : kOldest, orders)};
}

void TuningObject::showRows() {
  tapSliders_.sync({sliderRow(view_.duration, view_.durationCaption),
                    sliderRow(view_.drift, view_.driftCaption)});
  pinchSliders_.sync({sliderRow(view_.sensitivity, view_.sensitivityCaption)});
  centerSliders_.sync({sliderRow(view_.leftEdge, {}), sliderRow(view_.rightEdge, {})});
  QList<QVariantMap> rows;
  for (const TapActivityRow& tap : view_.taps.rows) rows.append(tapRow(tap));
  newestTap_.sync(rows.mid(0, 1));
  otherTaps_.sync(rows.mid(1));
}

void TuningObject::applyPreset(const QString& preset) {
  const auto index = static_cast<std::size_t>(preset.toUInt());
  if (index >= tapPresets().size()) return;
  pane_.applyPreset(tapPresets()[index].duration, tapPresets()[index].drift);
  refresh();
}

void TuningObject::applyCenterPreset(const QString& preset) {
  const auto index = static_cast<std::size_t>(preset.toUInt());
  if (index >= centerPresets().size()) return;
  pane_.applyCenter(centerPresets()[index].minimum, centerPresets()[index].maximum);
  refresh();
}

void TuningObject::restoreDefaults() {
  pane_.restoreDefaults();
  refresh();
}

void TuningObject::undo() {
  pane_.undo();
  refresh();
}

void TuningObject::move(int slider, double value) {
  if (const auto which = valueOf(slider)) pane_.moveSlider(*which, value);
  refresh();
}

void TuningObject::step(int slider, int steps) {
  const auto which = valueOf(slider);
  if (!which) return;
  for (int i = 0; i < std::abs(steps); ++i) {
    if (steps < 0) {
      pane_.decrement(*which);
    } else {
      pane_.increment(*which);
    }
  }
  refresh();
}

void TuningObject::resetValue(int slider) {
  if (const auto which = valueOf(slider)) pane_.reset(*which);
  refresh();
}

int TuningObject::edgeAt(double place) const {
  const TuningSnapshot now = pane_.snapshot();
  return static_cast<int>(centerBandEdgeAt(place, now.centerMinX, now.centerMaxX, 1));
}

void TuningObject::dragEdge(int slider, double place) {
  const auto which = valueOf(slider);
  if (!which) return;
  pane_.moveSlider(*which, centerBandEdgeValue(*which, place, 1));
  refresh();
}

void TuningObject::openGestures() {
  effects_.showGestures();
}

void TuningObject::turnOnPinch() {
  pane_.turnOnPinchZoom();
  refresh();
}

void TuningObject::setPaused(bool paused) {
  pane_.setPaused(paused);
  refresh();
}

void TuningObject::setFilter(const QString& picker, const QString& value) {
  TapActivityFilter filter = pane_.filter();
  if (picker == QStringLiteral("device")) filter.device = value.toStdString();
  if (picker == QStringLiteral("outcome")) filter.outcome = value.toStdString();
  if (picker == QStringLiteral("reason")) filter.reason = value.toStdString();
  if (picker == QStringLiteral("order")) filter.newestFirst = value == QLatin1String(kNewest);
  pane_.setFilter(std::move(filter));
  refresh();
}

void TuningObject::resetFilters() {
  pane_.resetFilters();
  refresh();
}

void TuningObject::clearTaps() {
  pane_.clearTaps();
  refresh();
}

void TuningObject::applySuggestion(int tap) {
  for (const TapActivityRow& row : view_.taps.rows) {
    if (row.id != tap || !row.suggestion) continue;
    pane_.apply(*row.suggestion);
    refresh();
    return;
  }
}

}  // namespace velotap
