#include "settings/gestures_pane.hpp"

#include <algorithm>
#include <utility>

#include "config/config.hpp"
#include "config/settings_keys.hpp"
#include "config/settings_table.hpp"
#include "localization/text_search.hpp"

namespace velotap {
namespace {

bool factory(std::string_view key) {
  const SettingRow* const row = findSetting(key);
  return row != nullptr && row->factoryNumber != 0;
}

// Is the trigger left to the desktop, or to nobody?
bool isLeftToDesktop(std::string_view key, TrackpadMode mode,
                     const std::optional<DesktopClicks>& desktop) {
  if (!desktop) return false;
  if (key == keys::kPadTap3) return !programAnswers(mode, desktop->threeFingerTap);
  if (key == keys::kPadClick3) return !programAnswers(mode, desktop->threeFingerClick);
  return false;
}

std::string_view storedMode(TrackpadMode mode) {
  switch (mode) {
    case TrackpadMode::automatic:
      break;
    case TrackpadMode::native:
      return "native";
    case TrackpadMode::post:
      return "post";
  }
  return "automatic";
}

std::string_view modeNoteKey(TrackpadMode mode, bool desktopClicks) {
  switch (mode) {
    case TrackpadMode::automatic:
      break;
    case TrackpadMode::native:
      return desktopClicks ? "gesture.mode.note.native" : "gesture.mode.note.nobody";
    case TrackpadMode::post:
      return desktopClicks ? "gesture.mode.note.twice" : "gesture.mode.note.post";
  }
  return desktopClicks ? "gesture.mode.note.desktop" : "gesture.mode.note.program";
}

TrackpadModeView modeView(TrackpadMode mode, const DesktopClicks& desktop, const Texts& texts) {
  return {.title = texts("gesture.mode.title"),
          .mode = mode,
          .choices = {{TrackpadMode::automatic, texts("gesture.mode.automatic")},
                      {TrackpadMode::native, texts("gesture.mode.native")},
                      {TrackpadMode::post, texts("gesture.mode.post")}},
          .note = texts(modeNoteKey(mode, desktop.any()))};
}

InactiveTriggerNote note(std::string_view textKey, NoteAction action, std::string_view titleKey,
                         const Texts& texts) {
  return {.text = texts(textKey),
          .action = action,
          .actionTitle = titleKey.empty() ? std::string() : texts(titleKey)};
}

// The first cause that must be mended, in the order in which readiness is decided.
std::optional<InactiveTriggerNote> inactiveNote(std::string_view key, bool on, TrackpadMode mode,
                                                const GestureFacts& facts, const Texts& texts) {
  if (!on) return std::nullopt;
  if (!facts.enabled) {
    return note("gesture.inactive.paused", NoteAction::showGeneral, "design.open.readiness", texts);
  }
  if (!facts.accessibilityGranted) {
    return note("gesture.inactive.permission", NoteAction::openAccessibilitySettings,
                facts.permissionIsSetUpHere ? "Accessibility Setup…" : "Open System Settings",
                texts);
  }
  if (!facts.listenersRunning) {
    return note("gesture.inactive.listeners", NoteAction::startListeners, "Try Again", texts);
  }
  if (isLeftToDesktop(key, mode, facts.desktopClicks)) {
    return note("gesture.inactive.desktop", NoteAction::none, {}, texts);
  }
  return std::nullopt;
}

std::size_t countOn(const TriggerValues& values) {
  return static_cast<std::size_t>(
      std::count_if(values.begin(), values.end(), [](const auto& entry) { return entry.second; }));
}

bool isFactory(const TriggerValues& values) {
  return std::all_of(values.begin(), values.end(),
                     [](const auto& entry) { return entry.second == factory(entry.first); });
}

}  // namespace

int GestureFilter::activeCount() const {
  return int{!trimmedText(query).empty()} + int{section != GestureSectionFilter::all} +
         int{enabledOnly} + int{modifiedOnly};
}

GesturesPane::GesturesPane(DefaultsStore& defaults, GestureDeviceSelection& selection,
                           DidEnable didEnable)
    : defaults_(defaults), selection_(selection), didEnable_(std::move(didEnable)) {}

TriggerValues GesturesPane::values(GestureDevice device) const {
  TriggerValues result;
  for (const SettingRow& row : triggerTable()) {
    if (gestureDeviceOfKey(row.key) == device) result.emplace(row.key, defaults_.boolean(row.key));
  }
  return result;
}

void GesturesPane::setTrigger(std::string_view key, bool on) {
  const bool was = defaults_.boolean(key);
  defaults_.set(key, on);
  if (on && !was && didEnable_) didEnable_(key);
}

TrackpadMode GesturesPane::mode() const {
  return trackpadMode(defaults_.text(keys::kPadThreeFingerMode).value_or(std::string()));
}

void GesturesPane::setTrackpadMode(TrackpadMode mode) {
  defaults_.set(keys::kPadThreeFingerMode, std::string(storedMode(mode)));
}

void GesturesPane::toggleExplanation(std::string_view key) {
  if (explained_ == key) {
    explained_.reset();
  } else {
    explained_ = std::string(key);
  }
}

void GesturesPane::resetSelectedGesture() {
  if (explained_) setTrigger(*explained_, factory(*explained_));
}

Confirmation GesturesPane::disableQuestion(const Texts& texts) {
  return {.title = texts("polish.gestures.disable.title"),
          .message = texts("polish.gestures.disable.note"),
          .confirm = texts("polish.gestures.disable"),
          .cancel = texts("Cancel")};
}

void GesturesPane::change(const TriggerValues& wanted) {
  GestureSettingsUndo undo{.before = values(selection_.device()), .after = {}};
  for (const auto& [key, on] : wanted) defaults_.set(key, on);
  undo.after = values(selection_.device());
  undo_ = std::move(undo);
}

void GesturesPane::disableAll() {
  TriggerValues off = values(selection_.device());
  for (auto& [key, on] : off) on = false;
  change(off);
}

void GesturesPane::restoreDeviceDefaults() {
  TriggerValues factoryValues = values(selection_.device());
  for (auto& [key, on] : factoryValues) on = factory(key);
  change(factoryValues);
}

void GesturesPane::undo() {
  if (!undo_) return;
  TriggerValues current = values(GestureDevice::mouse);
  current.merge(values(GestureDevice::trackpad));
  for (const auto& [key, on] : undo_->restoring(current)) defaults_.set(key, on);
  undo_.reset();
}

bool GesturesPane::shows(std::string_view key, const std::string& title, bool on) const {
  const bool middle = gestureCategory(key) == GestureCategory::middleClick;
  const bool fitsSection = filter_.section == GestureSectionFilter::all ||
                           (filter_.section == GestureSectionFilter::middle) == middle;
  return fitsSection && containsText(title, trimmedText(filter_.query)) &&
         (!filter_.enabledOnly || on) && (!filter_.modifiedOnly || on != factory(key));
}

ExplainedTriggerToggle GesturesPane::row(std::string_view key, const GestureFacts& facts,
                                         const Texts& texts) const {
  const GestureExplanation explanation(key, texts);
  const bool on = defaults_.boolean(key);
  const bool explained = explained_ == key;
  const bool modified = on != factory(key);
  return {.key = std::string(key),
          .title = explanation.title,
          .on = on,
          .modified = modified,
          .explained = explained,
          .explainLabel = explained ? texts("polish.gestures.hide.explanation")
                                    : texts("Explain %@", {explanation.title}),
          .explainSymbol = explained ? "info.circle.fill" : "info.circle",
          .detail = explained ? explanation.detail : std::string(),
          .resetLabel = explained && modified ? texts("design.reset.named", {explanation.title})
                                              : std::string(),
          .note = inactiveNote(key, on, mode(), facts, texts)};
}

void GesturesPane::addSections(const GestureFacts& facts, const Texts& texts,
                               GesturesView& view) const {
  GestureSectionView middle{GestureCategory::middleClick, texts("Middle click"), {}};
  GestureSectionView more{GestureCategory::more, texts("More gestures"), {}};
  for (const SettingRow& setting : triggerTable()) {
    if (gestureDeviceOfKey(setting.key) != selection_.device()) continue;
    ExplainedTriggerToggle toggle = row(setting.key, facts, texts);
    if (!shows(setting.key, toggle.title, toggle.on)) continue;
    auto& section = gestureCategory(setting.key) == GestureCategory::more ? more : middle;
    section.rows.push_back(std::move(toggle));
  }
  for (auto* section : {&middle, &more}) {
    if (!section->rows.empty()) view.sections.push_back(std::move(*section));
  }
  if (view.sections.empty()) {
    view.noMatches = texts("polish.gestures.no.matches");
    view.showAll = texts("design.show.all.gestures");
  }
}

void GesturesPane::addChoices(const Texts& texts, GesturesView& view) const {
  view.deviceTitle = texts("Device");
  view.device = selection_.device();
  for (const GestureDevice device : {GestureDevice::trackpad, GestureDevice::mouse}) {
    view.deviceChoices.emplace_back(device, texts(gestureDeviceTitleKey(device)));
  }
  view.searchPlaceholder = texts("refine.gestures.search");
  view.filters = settingsFilterDisclosure(filter_.activeCount(), texts);
  view.sectionPickerLabel = texts("design.gesture.section");
  view.sectionChoices = {{GestureSectionFilter::all, texts("design.all.settings")},
                         {GestureSectionFilter::middle, texts("Middle click")},
                         {GestureSectionFilter::more, texts("More gestures")}};
  view.enabledOnlyTitle = texts("design.enabled.gestures");
  view.modifiedOnlyTitle = texts("polish.gestures.modified");
}

GesturesView GesturesPane::view(const GestureFacts& facts, const Texts& texts) const {
  GesturesView view;
  view.introTitle = texts("Gestures");
  view.introText = texts("refine.gestures.intro");
  addChoices(texts, view);
  const bool available =
      view.device == GestureDevice::mouse ? facts.mouseAvailable : facts.trackpadAvailable;
  view.connection = deviceConnectionStatus(view.device, facts.connectedDevices, available, texts);
  if (view.device == GestureDevice::trackpad && facts.desktopClicks) {
    view.trackpadMode = modeView(mode(), *facts.desktopClicks, texts);
  }
  const TriggerValues current = values(view.device);
  const auto number = [&texts](std::size_t count) {
    return texts.format().wholeNumber(static_cast<std::int64_t>(count));
  };
  view.summary = texts("design.gestures.count", {number(countOn(current)), number(current.size())});
  addSections(facts, texts, view);
  view.actionsTitle = texts("polish.gestures.action");
  view.disableTitle = texts("polish.gestures.disable.device");
  view.canDisable = countOn(current) > 0;
  view.restoreTitle = texts("design.restore.device");
  view.restoreNote = texts("design.restore.device.note");
  view.canRestore = !isFactory(current);
  if (undo_) view.undoTitle = texts("polish.gestures.undo");
  view.practiceTitle = texts("Try a middle click");
  return view;
}

}  // namespace velotap
