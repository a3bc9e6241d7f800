#include "settings/apps_pane.hpp"

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

std::string number(std::size_t count, const Texts& texts) {
  return texts.format().wholeNumber(static_cast<std::int64_t>(count));
}

std::string_view titleKey(AppRuleList list) {
  return list == AppRuleList::ignored ? "Velotap off in these apps"
                                      : "Send zoom keyboard shortcuts";
}

}  // namespace

AppsPane::AppsPane(Config& config, Applications& applications, Announce announce, Options options)
    : config_(config),
      model_(config, applications, options.compatibility),
      announce_(std::move(announce)),
      options_(options) {}

void AppsPane::setSort(std::string_view sort) {
  config_.defaults().set(keys::kAppRuleSort, std::string(sort));
  model_.reload();
}

void AppsPane::setShowsIdentifiers(bool shown) {
  config_.defaults().set(keys::kAppRuleDetails, shown);
}

AppRuleFilter AppsPane::effectiveFilter() const {
  AppRuleFilter filter = filter_;
  filter.overriddenIDs = model_.overriddenIDs();
  filter.sort = config_.defaults().text(keys::kAppRuleSort).value_or("name");
  return filter;
}

std::vector<AppEntry> AppsPane::shown(AppRuleList list) const {
  const AppRuleFilter filter = effectiveFilter();
  const bool ignored = list == AppRuleList::ignored;
  if (!(ignored ? filter.showsIgnored() : filter.showsZoom())) return {};
  return filter.matching(ignored ? model_.ignored() : model_.keystrokeZoom());
}

void AppsPane::add(AppRuleList list, const std::vector<std::string>& bundleIDs) {
  for (const std::string& id : bundleIDs) {
    if (list == AppRuleList::ignored) {
      model_.addIgnored(id);
    } else {
      model_.addKeystrokeZoom(id);
    }
  }
  feedback_ = bundleIDs.empty() ? std::string_view() : "polish.apps.added";
}

void AppsPane::addSuggestion(const std::string& bundleID) {
  add(AppRuleList::ignored, {bundleID});
}

void AppsPane::remove(AppRuleList list, const std::string& bundleID, const Texts& texts) {
  undo_ = AppRuleUndo{.snapshot = model_.snapshot(), .bundleIDs = {bundleID}};
  removedName_ = model_.entry(bundleID).name;
  feedback_ = {};
  if (list == AppRuleList::ignored) {
    model_.removeIgnored(bundleID);
  } else {
    model_.removeKeystrokeZoom(bundleID);
  }
  announce_(undoText(texts));
}

std::string AppsPane::undoText(const Texts& texts) const {
  return removedName_ ? texts("Removed rule for %@", {*removedName_})
                      : texts("polish.apps.removed");
}

void AppsPane::removeVisible(const Texts& texts) {
  const std::vector<AppEntry> ignored = shown(AppRuleList::ignored);
  const std::vector<AppEntry> zoom = shown(AppRuleList::keystrokeZoom);
  if (ignored.empty() && zoom.empty()) return;
  undo_ = AppRuleUndo{.snapshot = model_.snapshot(), .bundleIDs = {}};
  for (const AppEntry& entry : ignored) {
    undo_->bundleIDs.push_back(entry.bundleID);
    model_.removeIgnored(entry.bundleID);
  }
  for (const AppEntry& entry : zoom) {
    undo_->bundleIDs.push_back(entry.bundleID);
    model_.removeKeystrokeZoom(entry.bundleID);
  }
  removedName_.reset();
  feedback_ = {};
  announce_(undoText(texts));
}

void AppsPane::undo(const Texts& texts) {
  if (!undo_) return;
  model_.restore(undo_->snapshot);
  undo_.reset();
  feedback_ = "Rule restored";
  announce_(texts(feedback_));
}

bool AppsPane::resolve(const std::string& bundleID) {
  const bool found = model_.entry(bundleID).isInstalled();
  model_.reload();
  feedback_ = found ? "polish.apps.resolved" : "polish.apps.unresolved";
  return found;
}

void AppsPane::noteCopied(const Texts& texts) {
  feedback_ = "design.copied";
  announce_(texts(feedback_));
}

bool AppsPane::showsIdentifiers() const {
  return !config_.defaults().object(keys::kAppRuleDetails) ||
         config_.defaults().boolean(keys::kAppRuleDetails);
}

AppRow AppsPane::row(const AppEntry& entry, bool overridden, const Texts& texts) const {
  AppRow row{.bundleID = entry.bundleID,
             .name = entry.name,
             .identifier = showsIdentifiers() ? entry.bundleID : std::string(),
             .url = entry.url.value_or(std::string()),
             .missing = entry.isInstalled() ? std::string() : texts("polish.apps.missing"),
             .resolveTitle = entry.isInstalled() ? std::string() : texts("polish.apps.resolve"),
             .note = overridden ? texts("apps.rule.overridden") : std::string(),
             .revealTitle = texts("refine.apps.reveal"),
             .canReveal = entry.isInstalled(),
             .copyTitle = texts("refine.apps.copy.id"),
             .removeTitle = texts("Remove %@", {entry.name}),
             .accessibilityLabel = entry.name};
  for (const std::string* part : {&row.identifier, &row.missing, &row.note}) {
    // An application without a name is called by its identifier; nobody wants to hear it twice.
    if (!part->empty() && *part != row.name) row.accessibilityLabel += ", " + *part;
  }
  return row;
}

AppListView AppsPane::list(AppRuleList which, const std::vector<AppEntry>& shown,
                           const Texts& texts) const {
  AppListView view{.list = which,
                   .title = texts(titleKey(which)),
                   .rows = {},
                   .empty = {},
                   .addTitle = texts("design.add.app.menu", {texts(titleKey(which))})};
  const bool ignored = which == AppRuleList::ignored;
  const auto overridden = model_.overriddenIDs();
  for (const AppEntry& entry : shown) {
    view.rows.push_back(row(entry, !ignored && overridden.contains(entry.bundleID), texts));
  }
  const auto& all = ignored ? model_.ignored() : model_.keystrokeZoom();
  if (all.empty()) {
    view.empty = texts(ignored ? "No ignored apps" : "apps.no.zoom");
  } else if (shown.empty()) {
    view.empty = texts("No matching app rules");
  }
  return view;
}

void AppsPane::addFilters(const Texts& texts, AppsView& view) const {
  view.searchPlaceholder = texts("Search app names or identifiers");
  view.searchLabel = texts("Search app rules");
  view.clearSearch = texts("Clear search");
  view.showsClearSearch = !filter_.query.empty();
  view.filters = settingsFilterDisclosure(filter_.activeCount(), texts);
  view.ruleTypeTitle = texts("design.rule.type");
  view.ruleTypes = {{"all", texts("design.all.rules")},
                    {"ignored", texts(titleKey(AppRuleList::ignored))},
                    {"zoom", texts(titleKey(AppRuleList::keystrokeZoom))}};
  view.availabilityTitle = texts("polish.apps.availability");
  view.availabilities = {{"all", texts("polish.apps.all")},
                         {"installed", texts("refine.apps.installed")},
                         {"missing", texts("polish.apps.missing")}};
  view.overriddenTitle = texts("polish.apps.overridden");
  view.sortTitle = texts("polish.apps.sort");
  view.sorts = {{"name", texts("polish.apps.by.name")}, {"identifier", texts("polish.apps.by.id")}};
  view.sort = effectiveFilter().sort == "identifier" ? "identifier" : "name";
  view.identifiersTitle = texts("polish.apps.identifiers");
  view.showsIdentifiers = showsIdentifiers();
}

void AppsPane::addLists(const Texts& texts, AppsView& view) const {
  const std::size_t total = model_.ignored().size() + model_.keystrokeZoom().size();
  const std::vector<AppEntry> ignored = shown(AppRuleList::ignored);
  const std::vector<AppEntry> zoom = shown(AppRuleList::keystrokeZoom);
  const std::size_t visible = ignored.size() + zoom.size();
  const bool filtered = filter_.hidesAnything();
  if (filtered) {
    view.count = texts("Showing %@ of %@ rules", {number(visible, texts), number(total, texts)});
  }
  if (filtered && visible == 0) {
    view.noMatches = texts("No matching app rules");
    view.noMatchesHint =
        texts("Try another app name or identifier. Your saved rules are unchanged.");
    view.resetTitle = texts("refine.reset.filters");
    return;
  }
  if (filter_.showsIgnored()) view.lists.push_back(list(AppRuleList::ignored, ignored, texts));
  if (filter_.showsZoom()) {
    view.lists.push_back(list(AppRuleList::keystrokeZoom, zoom, texts));
  }
  view.removeVisibleTitle = texts("polish.apps.remove.visible");
  view.canRemoveVisible = visible > 0;
  view.removeVisible = {.title = texts("polish.apps.remove.title"),
                        .message = texts("polish.apps.remove.note"),
                        .confirm = texts("polish.apps.remove.count", {number(visible, texts)}),
                        .cancel = texts("Cancel")};
}

void AppsPane::addSuggestions(const Texts& texts, AppsView& view) const {
  view.suggestionsTitle = texts("Suggestions");
  for (const std::string& id : model_.suggestions()) {
    const AppEntry entry = model_.entry(id);
    if (options_.suggestsInstalledOnly && !entry.isInstalled()) continue;
    view.suggestions.push_back(
        {.bundleID = id, .name = entry.name, .addTitle = texts("Add %@", {entry.name})});
  }
  if (view.suggestions.empty()) view.noSuggestions = texts("No compatibility apps");
}

AppsView AppsPane::view(const Texts& texts) const {
  AppsView view;
  view.introTitle = texts("Apps");
  view.introText = texts("refine.apps.intro");
  if (options_.hidesFrontApplication) view.unavailable = texts("desktop.front.hidden");
  addFilters(texts, view);
  addLists(texts, view);
  if (!feedback_.empty()) view.feedback = texts(feedback_);
  if (undo_) {
    view.undoText = undoText(texts);
    view.undoTitle = texts("Undo");
    view.undoNote = texts("polish.apps.undo.note");
  }
  addSuggestions(texts, view);
  view.addTitle = texts("design.add.apps");
  view.chooseTitle = texts("Choose from Applications…");
  view.runningTitle = texts("Running Apps");
  view.listsInstalled = options_.listsInstalled;
  return view;
}

}  // namespace velotap
