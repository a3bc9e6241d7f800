#include "settings/window/gestures_object.hpp"

#include <array>
#include <utility>

#include "settings/gesture_practice.hpp"
#include "settings/window/values.hpp"

namespace velotap {
namespace {

constexpr std::array<std::pair<GestureSectionFilter, std::string_view>, 3> kSections{{
    {GestureSectionFilter::all, "all"},
    {GestureSectionFilter::middle, "middle"},
    {GestureSectionFilter::more, "more"},
}};

std::string_view nameOf(GestureSectionFilter section) {
  for (const auto& [value, name] : kSections) {
    if (value == section) return name;
  }
  return {};
}

constexpr std::array<std::pair<TrackpadMode, std::string_view>, 3> kModes{{
    {TrackpadMode::automatic, "automatic"},
    {TrackpadMode::native, "native"},
    {TrackpadMode::post, "post"},
}};

std::string_view nameOf(TrackpadMode mode) {
  for (const auto& [value, name] : kModes) {
    if (value == mode) return name;
  }
  return {};
}

const char* nameOf(GesturePreview::Kind kind) {
  switch (kind) {
    case GesturePreview::Kind::click:
      return "click";
    case GesturePreview::Kind::pinch:
      return "pinch";
    case GesturePreview::Kind::rotate:
      return "rotate";
    case GesturePreview::Kind::swipe:
      return "swipe";
    case GesturePreview::Kind::tap:
      break;
  }
  return "tap";
}

QVariantMap rowOf(const ExplainedTriggerToggle& row) {
  const GesturePreview preview = gesturePreview(row.key);
  return fields({{"id", row.key},
                 {"title", row.title},
                 {"on", row.on},
                 {"explainName", row.explainLabel},
                 {"explainSymbol", row.explainSymbol},
                 {"expanded", row.explained},
                 {"detail", row.detail},
                 {"reset", row.resetLabel},
                 {"note", row.note ? row.note->text : std::string()},
                 {"noteAction", row.note ? row.note->actionTitle : std::string()},
                 {"fingers", preview.fingers},
                 {"kind", nameOf(preview.kind)},
                 {"device", gestureDeviceText(preview.device)}});
}

QVariantMap deviceState(const GesturesView& view) {
  QVariantList options;
  for (const auto& [device, title] : view.deviceChoices) {
    options.append(choice(gestureDeviceText(device), title));
  }
  return fields({{"name", view.deviceTitle},
                 {"options", options},
                 {"value", gestureDeviceText(view.device)}});
}

QVariantMap modeState(const std::optional<TrackpadModeView>& mode) {
  const TrackpadModeView shown = mode.value_or(TrackpadModeView());
  QVariantList options;
  for (const auto& [choiceMode, title] : shown.choices) {
    options.append(choice(nameOf(choiceMode), title));
  }
  return fields({{"shown", mode.has_value()},
                 {"title", shown.title},
                 {"options", options},
                 {"value", nameOf(shown.mode)},
                 {"note", shown.note}});
}

QVariantMap disableState(const GesturesView& view, const Confirmation& question) {
  return fields({{"title", view.disableTitle},
                 {"possible", view.canDisable},
                 {"question", question.title},
                 {"note", question.message},
                 {"confirm", question.confirm},
                 {"cancel", question.cancel}});
}

}  // namespace

GesturesObject::GesturesObject(DefaultsStore& defaults, GestureDeviceSelection& selection,
                               GesturesEffects effects, QObject* parent)
    : PaneObject(parent),
      effects_(std::move(effects)),
      pane_(defaults, selection, effects_.didEnable) {
  refresh();
}

void GesturesObject::refresh() {
  const Texts texts = effects_.texts();
  view_ = pane_.view(effects_.facts(), texts);
  showRows(view_);
  setState(fields({{"intro", fields({{"title", view_.introTitle}, {"text", view_.introText}})},
                   {"device", deviceState(view_)},
                   {"connection", fields({{"symbol", view_.connection.symbol},
                                          {"text", view_.connection.text},
                                          {"connected", view_.connection.connected}})},
                   {"mode", modeState(view_.trackpadMode)},
                   {"tryButton", view_.practiceTitle},
                   {"search", fields({{"hint", view_.searchPlaceholder},
                                      {"clear", texts("Clear search")},
                                      {"query", pane_.filter().query}})},
                   {"filter", filterState(view_, texts)},
                   {"summary", view_.summary},
                   {"middleTitle", texts("Middle click")},
                   {"moreTitle", texts("More gestures")},
                   {"empty", fields({{"shown", !view_.noMatches.empty()},
                                     {"title", view_.noMatches},
                                     {"action", view_.showAll}})},
                   {"actionsTitle", view_.actionsTitle},
                   {"disable", disableState(view_, GesturesPane::disableQuestion(texts))},
                   {"restore", fields({{"title", view_.restoreTitle},
                                       {"note", view_.restoreNote},
                                       {"possible", view_.canRestore}})},
                   {"undo", view_.undoTitle}}));
}

QVariantMap GesturesObject::filterState(const GesturesView& view, const Texts&) const {
  const GestureFilter& filter = pane_.filter();
  QVariantList sections;
  for (const auto& [section, title] : view.sectionChoices) {
    sections.append(choice(nameOf(section), title));
  }
  return fields(
      {{"title", view.filters.title},
       {"active", filter.activeCount()},
       {"reset", view.filters.resetTitle},
       {"sectionName", view.sectionPickerLabel},
       {"sections", sections},
       {"section", nameOf(filter.section)},
       {"enabledOnly", fields({{"title", view.enabledOnlyTitle}, {"on", filter.enabledOnly}})},
       {"modifiedOnly", fields({{"title", view.modifiedOnlyTitle}, {"on", filter.modifiedOnly}})}});
}

void GesturesObject::showRows(const GesturesView& view) {
  QList<QVariantMap> middle;
  QList<QVariantMap> more;
  for (const GestureSectionView& section : view.sections) {
    auto& rows = section.category == GestureCategory::middleClick ? middle : more;
    for (const ExplainedTriggerToggle& row : section.rows) rows.append(rowOf(row));
  }
  middle_.sync(middle);
  more_.sync(more);
}

void GesturesObject::setDevice(const QString& device) {
  if (const auto chosen = gestureDevice(device.toStdString())) pane_.setDevice(*chosen);
  refresh();
}

void GesturesObject::setTrackpadMode(const QString& mode) {
  for (const auto& [value, name] : kModes) {
    if (qt(name) == mode) pane_.setTrackpadMode(value);
  }
  refresh();
}

void GesturesObject::filter(const std::function<void(GestureFilter&)>& change) {
  GestureFilter filter = pane_.filter();
  change(filter);
  pane_.setFilter(std::move(filter));
  refresh();
}

void GesturesObject::setQuery(const QString& query) {
  filter([&query](GestureFilter& filter) { filter.query = query.toStdString(); });
}

void GesturesObject::setSection(const QString& section) {
  for (const auto& [value, name] : kSections) {
    if (qt(name) == section) {
      filter([chosen = value](GestureFilter& filter) { filter.section = chosen; });
    }
  }
}

void GesturesObject::setEnabledOnly(bool on) {
  filter([on](GestureFilter& filter) { filter.enabledOnly = on; });
}

void GesturesObject::setModifiedOnly(bool on) {
  filter([on](GestureFilter& filter) { filter.modifiedOnly = on; });
}

void GesturesObject::resetFilters() {
  pane_.resetFilters();
  refresh();
}

void GesturesObject::setTrigger(const QString& key, bool on) {
  pane_.setTrigger(key.toStdString(), on);
  refresh();
}

QString GesturesObject::firstTrigger() const {
  for (const GestureSectionView& section : view_.sections) {
    if (!section.rows.empty()) return qt(section.rows.front().key);
  }
  return {};
}

void GesturesObject::explain(const QString& key) {
  pane_.toggleExplanation(key.toStdString());
  refresh();
}

void GesturesObject::resetSelected() {
  pane_.resetSelectedGesture();
  refresh();
}

void GesturesObject::actOnNote(const QString& key) {
  for (const GestureSectionView& section : view_.sections) {
    for (const ExplainedTriggerToggle& row : section.rows) {
      if (qt(row.key) != key || !row.note) continue;
      switch (row.note->action) {
        case NoteAction::none:
          return;
        case NoteAction::openAccessibilitySettings:
          return effects_.openAccessibilitySettings();
        case NoteAction::startListeners:
          return effects_.startListeners();
        case NoteAction::showGeneral:
          return effects_.showGeneral();
      }
    }
  }
}

void GesturesObject::disableAll() {
  pane_.disableAll();
  refresh();
}

void GesturesObject::restoreDefaults() {
  pane_.restoreDeviceDefaults();
  refresh();
}

void GesturesObject::undo() {
  pane_.undo();
  refresh();
}

}  // namespace velotap
