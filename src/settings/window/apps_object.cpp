#include "settings/window/apps_object.hpp"

#include <utility>

#include "settings/window/values.hpp"

namespace velotap {
namespace {

constexpr const char* kIgnored = "ignored";
constexpr const char* kZoom = "zoom";

AppRuleList listOf(const QString& name) {
  return name == QLatin1String(kZoom) ? AppRuleList::keystrokeZoom : AppRuleList::ignored;
}

QVariantMap picker(const char* id, const std::string& title, std::string_view value,
                   const std::vector<std::pair<std::string_view, std::string>>& choices) {
  QVariantList options;
  for (const auto& [name, label] : choices) options.append(choice(name, label));
  return fields({{"id", id}, {"title", title}, {"value", value}, {"options", options}});
}

QVariantMap ruleRow(const AppRow& row, const std::string& icon) {
  return fields({{"id", row.bundleID},
                 {"name", row.name},
                 {"identifier", row.identifier},
                 {"icon", icon},
                 {"note", row.note},
                 {"missing", row.missing},
                 {"resolve", row.missing.empty() ? std::string() : row.resolveTitle},
                 {"reveal", row.canReveal ? row.revealTitle : std::string()},
                 {"copy", row.copyTitle},
                 {"remove", row.removeTitle},
                 {"help", row.accessibilityLabel}});
}

QVariantMap listStates(const AppsView& view) {
  const QVariantMap absent = fields({{"title", ""}, {"none", ""}, {"add", ""}, {"visible", false}});
  QVariantMap lists = fields({{kIgnored, absent}, {kZoom, absent}});
  for (const AppListView& list : view.lists) {
    const char* name = list.list == AppRuleList::ignored ? kIgnored : kZoom;
    lists.insert(QLatin1String(name), fields({{"title", list.title},
                                              {"none", list.empty},
                                              {"add", list.addTitle},
                                              {"visible", true}}));
  }
  return lists;
}

QVariantMap addingState(const AppsView& view) {
  return fields({{"title", view.addTitle},
                 {"choose", view.chooseTitle},
                 {"listsInstalled", view.listsInstalled},
                 {"running", view.runningTitle}});
}

}  // namespace

AppsObject::AppsObject(AppsEffects effects, QObject* parent)
    : PaneObject(parent),
      effects_(std::move(effects)),
      pane_(effects_.config, effects_.applications, effects_.announce, effects_.options),
      chooser_({}) {
  AppsObject::refresh();
}

void AppsObject::refresh() {
  pane_.reload();
  show();
}

// Without looking the applications up again: their rules and what is installed are as they were.
void AppsObject::show() {
  const Texts texts = effects_.texts();
  const AppsView view = pane_.view(texts);
  showRows(view);
  setState(fields(
      {{"intro", fields({{"title", view.introTitle}, {"text", view.introText}})},
       {"unavailable", view.unavailable},
       {"search", fields({{"hint", view.searchPlaceholder},
                          {"name", view.searchLabel},
                          {"clear", view.clearSearch},
                          {"query", pane_.filter().query}})},
       {"filter", filterState(view)},
       {"count", view.count},
       {"message", view.feedback},
       {"undo",
        fields({{"text", view.undoText}, {"note", view.undoNote}, {"action", view.undoTitle}})},
       {"lists", listStates(view)},
       {"empty", fields({{"shown", !view.noMatches.empty()},
                         {"title", view.noMatches},
                         {"text", view.noMatchesHint},
                         {"action", view.resetTitle}})},
       {"adding", addingState(view)},
       {"removeVisible", fields({{"title", view.removeVisibleTitle},
                                 {"possible", view.canRemoveVisible},
                                 {"question", view.removeVisible.title},
                                 {"note", view.removeVisible.message},
                                 {"confirm", view.removeVisible.confirm},
                                 {"cancel", view.removeVisible.cancel}})},
       {"suggestions", fields({{"title", view.suggestionsTitle}, {"none", view.noSuggestions}})}}));
  showRunning();
}

void AppsObject::showRunning() {
  const QVariantMap state = makeRunningState(effects_.texts());
  if (state == runningState_) return;
  runningState_ = state;
  emit runningStateChanged();
}

QVariantMap AppsObject::filterState(const AppsView& view) const {
  const AppRuleFilter& filter = pane_.filter();
  const QVariantList pickers{
      picker("type", view.ruleTypeTitle, filter.ruleType, view.ruleTypes),
      picker("availability", view.availabilityTitle, filter.availability, view.availabilities)};
  return fields(
      {{"title", view.filters.title},
       {"active", filter.activeCount()},
       {"reset", view.filters.resetTitle},
       {"pickers", pickers},
       {"overridden", fields({{"title", view.overriddenTitle}, {"on", filter.overriddenOnly}})},
       {"sort", picker("sort", view.sortTitle, view.sort, view.sorts)},
       {"identifiers", fields({{"title", view.identifiersTitle}, {"on", view.showsIdentifiers}})}});
}

QVariantMap AppsObject::makeRunningState(const Texts& texts) {
  const RunningAppsView view = chooser_.view(texts);
  QList<QVariantMap> rows;
  for (const RunningAppsView::Row& row : view.rows) {
    rows.append(fields({{"id", row.bundleID},
                        {"name", row.name},
                        {"identifier", row.bundleID},
                        {"icon", effects_.icon(row.bundleID)},
                        {"selected", row.selected}}));
  }
  running_.sync(rows);
  return fields({{"title", view.title},
                 {"message", view.message},
                 {"hint", view.searchPlaceholder},
                 {"clear", texts("Clear search")},
                 {"query", runningQuery_},
                 {"file", view.fileTitle},
                 {"none", view.empty},
                 {"count", view.selectedText},
                 {"selectVisible", view.selectVisibleTitle},
                 {"canSelectVisible", view.canSelectVisible},
                 {"clearSelection", view.clearTitle},
                 {"canAdd", view.canAdd},
                 {"refresh", view.refreshTitle},
                 {"add", view.addTitle},
                 {"cancel", view.cancelTitle}});
}

void AppsObject::showRows(const AppsView& view) {
  for (const AppListView& list : view.lists) {
    QList<QVariantMap> rows;
    for (const AppRow& row : list.rows) rows.append(ruleRow(row, effects_.icon(row.bundleID)));
    (list.list == AppRuleList::ignored ? ignored_ : zoom_).sync(rows);
  }
  QList<QVariantMap> rows;
  for (const AppSuggestionRow& row : view.suggestions) {
    rows.append(fields({{"id", row.bundleID},
                        {"name", row.name},
                        {"identifier", row.name == row.bundleID ? std::string() : row.bundleID},
                        {"icon", effects_.icon(row.bundleID)},
                        {"add", row.addTitle}}));
  }
  suggestions_.sync(rows);
}

void AppsObject::filter(const std::function<void(AppRuleFilter&)>& change) {
  AppRuleFilter filter = pane_.filter();
  change(filter);
  pane_.setFilter(std::move(filter));
  show();
}

void AppsObject::setQuery(const QString& query) {
  filter([&query](AppRuleFilter& filter) { filter.query = query.toStdString(); });
}

void AppsObject::setFilter(const QString& picker, const QString& value) {
  const std::string chosen = value.toStdString();
  if (picker == QStringLiteral("sort")) pane_.setSort(chosen);
  filter([&picker, &chosen](AppRuleFilter& filter) {
    if (picker == QStringLiteral("type")) filter.ruleType = chosen;
    if (picker == QStringLiteral("availability")) filter.availability = chosen;
  });
}

void AppsObject::setOverriddenOnly(bool on) {
  filter([on](AppRuleFilter& filter) { filter.overriddenOnly = on; });
}

void AppsObject::setShowsIdentifiers(bool on) {
  pane_.setShowsIdentifiers(on);
  refresh();
}

void AppsObject::resetFilters() {
  pane_.resetFilters();
  refresh();
}

void AppsObject::choose(AppRuleList list) {
  pane_.add(list, effects_.choose(effects_.texts()("Choose one or more apps to add.")));
  refresh();
}

void AppsObject::chooseApplications(const QString& list) {
  choose(listOf(list));
}

void AppsObject::chooseFile() {
  choose(runningFor_);
}

void AppsObject::remove(const QString& list, const QString& bundleID) {
  pane_.remove(listOf(list), bundleID.toStdString(), effects_.texts());
  refresh();
}

void AppsObject::removeVisible() {
  pane_.removeVisible(effects_.texts());
  refresh();
}

void AppsObject::undo() {
  pane_.undo(effects_.texts());
  refresh();
}

void AppsObject::resolve(const QString& bundleID) {
  pane_.resolve(bundleID.toStdString());
  refresh();
}

void AppsObject::reveal(const QString& bundleID) {
  const AppEntry entry = pane_.model().entry(bundleID.toStdString());
  if (entry.url) effects_.reveal(*entry.url);
}

void AppsObject::copyIdentifier(const QString& bundleID) {
  if (effects_.copy(bundleID.toStdString())) pane_.noteCopied(effects_.texts());
  refresh();
}

void AppsObject::addSuggestion(const QString& bundleID) {
  pane_.addSuggestion(bundleID.toStdString());
  refresh();
}

std::vector<AppEntry> AppsObject::candidates(AppsOffered offered) const {
  const std::vector<std::string> present = runningFor_ == AppRuleList::ignored
                                               ? effects_.config.ignoredApps()
                                               : effects_.config.keystrokeZoomApps();
  Applications& applications = effects_.applications;
  switch (offered) {
    case AppsOffered::running:
      break;
    case AppsOffered::installed:
      return InstalledAppCandidates{applications.installed()}.filter(present, effects_.ownBundleID);
  }
  return RunningAppCandidates{applications.running()}.filter(present, effects_.ownBundleID);
}

void AppsObject::openChooser(const QString& list, AppsOffered offered) {
  runningFor_ = listOf(list);
  runningQuery_.clear();
  chooser_ = RunningAppsChooser(candidates(offered), offered);
  showRunning();
}

void AppsObject::openRunning(const QString& list) {
  openChooser(list, AppsOffered::running);
}

void AppsObject::openInstalled(const QString& list) {
  openChooser(list, AppsOffered::installed);
}

void AppsObject::setRunningQuery(const QString& query) {
  runningQuery_ = query.toStdString();
  chooser_.setQuery(runningQuery_);
  showRunning();
}

void AppsObject::toggleRunning(const QString& bundleID) {
  chooser_.toggle(bundleID.toStdString());
  showRunning();
}

void AppsObject::selectVisible() {
  chooser_.selectVisible();
  showRunning();
}

void AppsObject::clearSelection() {
  chooser_.clearSelection();
  showRunning();
}

void AppsObject::refreshRunning() {
  chooser_.refresh(candidates(chooser_.offered()));
  showRunning();
}

void AppsObject::addRunning() {
  pane_.add(runningFor_, chooser_.selection());
  refresh();
}

}  // namespace velotap
