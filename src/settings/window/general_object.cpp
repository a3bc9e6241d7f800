#include "settings/window/general_object.hpp"

#include <utility>

#include "settings/window/values.hpp"

namespace velotap {
namespace {

const char* toneOf(GeneralColour colour) {
  switch (colour) {
    case GeneralColour::green:
      return "good";
    case GeneralColour::orange:
      return "warning";
    case GeneralColour::secondary:
      break;
  }
  return "neutral";
}

QVariantMap searchState(const SettingsSearchView& search, const std::string& query) {
  return fields({{"hint", search.placeholder},
                 {"clear", search.clearTitle},
                 {"query", query},
                 {"active", search.showsResults},
                 {"none", search.noMatches}});
}

QVariantMap statusState(const GeneralStatusCard& card) {
  return fields({{"symbol", card.symbol},
                 {"tone", toneOf(card.colour)},
                 {"title", card.title},
                 {"detail", card.detail},
                 {"action", card.actionTitle}});
}

QVariantMap readinessState(const GeneralView& view) {
  bool met = true;
  std::string status;
  for (const ReadinessRow& row : view.readinessRows) {
    if (status.empty() || (met && !row.met)) status = row.status;
    met = met && row.met;
  }
  return fields({{"title", view.readinessTitle},
                 {"status", status},
                 {"symbol", met ? "checkmark.circle.fill" : "exclamationmark.circle"},
                 {"tone", met ? "good" : "warning"}});
}

QVariantMap startupState(const GeneralView& view, const Confirmation& question) {
  return fields({{"title", view.startupTitle},
                 {"launch", fields({{"title", view.launchTitle},
                                    {"caption", view.approvalCaption},
                                    {"on", view.launchesAtLogin},
                                    {"action", view.openLoginItems}})},
                 {"leftClick", fields({{"title", view.leftClickTitle},
                                       {"caption", view.leftClickCaption},
                                       {"on", view.leftClickToggles}})},
                 {"hide", fields({{"title", view.hideIconTitle},
                                  {"caption", view.hiddenCaption},
                                  {"on", view.hidesIcon},
                                  {"question", question.title},
                                  {"note", question.message},
                                  {"confirm", question.confirm},
                                  {"cancel", question.cancel}})}});
}

QVariantMap updatesState(const GeneralView& view) {
  return fields(
      {{"title", view.updatesTitle},
       {"automatic", fields({{"title", view.automaticChecksTitle}, {"on", view.automaticChecks}})},
       {"available", view.canCheck},
       {"checkNow", view.checkNow},
       {"last", view.lastChecked}});
}

QVariantMap deviceRow(const ConnectedDeviceCard& card) {
  return fields({{"id", gestureDeviceText(card.device)},
                 {"symbol", card.symbol},
                 {"name", card.name},
                 {"status", card.status},
                 {"statusSymbol", card.connected ? "cable.connector" : "info.circle"},
                 {"connected", card.connected},
                 {"help", card.help}});
}

}  // namespace

GeneralObject::GeneralObject(GeneralEffects effects, QObject* parent)
    : PaneObject(parent), effects_(std::move(effects)) {
  refresh();
}

// Listeners that the switch starts are facts too, so these are asked for again.
GeneralFacts GeneralObject::facts() {
  GeneralFacts now = effects_.facts();
  if (std::exchange(enabled_, now.enabled).value_or(now.enabled) == now.enabled) return now;
  effects_.synchronizeEnabled();
  return effects_.facts();
}

void GeneralObject::refresh() {
  const Texts texts = effects_.texts();
  view_ = generalView(facts(), texts);
  search_ = settingsSearchView(query_, texts);
  showRows();
  setState(fields({{"search", searchState(search_, query_)},
                   {"status", statusState(view_.card)},
                   {"enable", fields({{"title", view_.enableTitle}, {"on", view_.enabled}})},
                   {"readiness", readinessState(view_)},
                   {"devices", fields({{"title", view_.devicesTitle},
                                       {"openGestures", view_.openGestures},
                                       {"openTuning", view_.openTuning}})},
                   {"desktop", fields({{"title", view_.desktopTitle}})},
                   {"startup", startupState(view_, hideIconQuestion(texts))},
                   {"updates", updatesState(view_)}}));
}

void GeneralObject::showRows() {
  QList<QVariantMap> rows;
  for (const auto& row : search_.rows) {
    rows.append(fields({{"id", row.id}, {"title", row.title}, {"caption", row.caption}}));
  }
  results_.sync(rows);
  rows.clear();
  for (const ReadinessRow& row : view_.readinessRows) {
    rows.append(fields({{"id", static_cast<int>(rows.size())},
                        {"symbol", row.symbol},
                        {"tone", row.met ? "good" : "warning"},
                        {"title", row.title},
                        {"caption", row.status},
                        {"action", row.actionTitle}}));
  }
  readiness_.sync(rows);
  rows.clear();
  for (const std::string& note : view_.notes) {
    rows.append(fields({{"id", note}, {"text", note}}));
  }
  notes_.sync(rows);
  rows.clear();
  for (const ConnectedDeviceCard& card : view_.devices) rows.append(deviceRow(card));
  devices_.sync(rows);
  rows.clear();
  for (const DesktopRow& row : view_.desktopRows) {
    rows.append(fields({{"id", row.title},
                        {"symbol", row.symbol},
                        {"title", row.title},
                        {"caption", row.caption},
                        {"tone", row.inOrder ? "neutral" : "warning"}}));
  }
  desktop_.sync(rows);
}

void GeneralObject::setQuery(const QString& query) {
  query_ = query.toStdString();
  refresh();
}

void GeneralObject::openResult(const QString& id) {
  for (const auto& row : search_.rows) {
    if (row.id == id.toStdString()) return effects_.showPane(row.pane);
  }
}

void GeneralObject::perform(GeneralAction action) {
  switch (action) {
    case GeneralAction::none:
      return;
    case GeneralAction::enable:
      effects_.setEnabled(true);
      break;
    case GeneralAction::setUpAccessibility:
      effects_.setUpAccessibility();
      break;
    case GeneralAction::startListeners:
      effects_.startListeners();
      break;
  }
  refresh();
}

void GeneralObject::act() {
  perform(view_.card.action);
}

void GeneralObject::resolve(int row) {
  if (row < 0 || static_cast<std::size_t>(row) >= view_.readinessRows.size()) return;
  perform(view_.readinessRows[static_cast<std::size_t>(row)].action);
}

void GeneralObject::setEnabled(bool on) {
  effects_.setEnabled(on);
  refresh();
}

void GeneralObject::openDevice(const QString& device) {
  const auto chosen = gestureDevice(device.toStdString());
  if (!chosen) return;
  effects_.chooseDevice(*chosen);
  effects_.showPane(PreferencesTab::gestures);
}

void GeneralObject::openGestures() {
  effects_.showPane(PreferencesTab::gestures);
}

void GeneralObject::openTuning() {
  effects_.showPane(PreferencesTab::tuning);
}

void GeneralObject::setLaunchAtLogin(bool on) {
  if (on != view_.launchesAtLogin) effects_.toggleLaunchAtLogin();
  refresh();
}

void GeneralObject::openLoginItems() {
  effects_.openLoginItems();
}

void GeneralObject::setLeftClickToggles(bool on) {
  effects_.setLeftClickToggles(on);
  refresh();
}

void GeneralObject::setHideIcon(bool on) {
  effects_.setHideIcon(on);
  refresh();
}

void GeneralObject::setAutomaticUpdates(bool on) {
  effects_.setAutomaticChecks(on);
  refresh();
}

void GeneralObject::checkForUpdates() {
  effects_.checkForUpdates();
  refresh();
}

}  // namespace velotap
