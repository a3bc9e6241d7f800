#include "settings/running_apps_chooser.hpp"

#include <algorithm>

#include "localization/text_search.hpp"

namespace velotap {

std::vector<AppEntry> RunningAppCandidates::filter(const std::vector<std::string>& excluding,
                                                   std::string_view ownBundleID) const {
  std::vector<AppEntry> result;
  std::set<std::string, std::less<>> taken(excluding.begin(), excluding.end());
  taken.emplace(ownBundleID);
  for (const RunningInstance& each : running) {
    if (!each.regular || each.bundleId.empty() || !taken.insert(each.bundleId).second) continue;
    result.push_back({.bundleID = each.bundleId,
                      .name = each.name.empty() ? each.bundleId : each.name,
                      .url = {}});
  }
  return AppRuleFilter{}.matching(std::move(result));
}

RunningAppsChooser::RunningAppsChooser(std::vector<AppEntry> candidates)
    : candidates_(std::move(candidates)) {}

void RunningAppsChooser::refresh(std::vector<AppEntry> candidates) {
  candidates_ = std::move(candidates);
  const std::vector<std::string> kept = selection();
  selected_ = {kept.begin(), kept.end()};
}

void RunningAppsChooser::toggle(const std::string& bundleID) {
  if (selected_.erase(bundleID) == 0) selected_.insert(bundleID);
}

void RunningAppsChooser::selectVisible() {
  for (const AppEntry& entry : visible()) selected_.insert(entry.bundleID);
}

std::vector<std::string> RunningAppsChooser::selection() const {
  std::vector<std::string> result;
  for (const AppEntry& entry : candidates_) {
    if (selected_.contains(entry.bundleID)) result.push_back(entry.bundleID);
  }
  return result;
}

std::vector<AppEntry> RunningAppsChooser::visible() const {
  AppRuleFilter filter;
  filter.query = std::string(trimmedText(query_));
  return filter.matching(candidates_);
}

RunningAppsView RunningAppsChooser::view(const Texts& texts) const {
  RunningAppsView view;
  view.title = texts("Running Apps");
  view.searchPlaceholder = texts("design.search.running");
  for (const AppEntry& entry : visible()) {
    const bool selected = selected_.contains(entry.bundleID);
    view.rows.push_back({.bundleID = entry.bundleID, .name = entry.name, .selected = selected});
    view.canSelectVisible = view.canSelectVisible || !selected;
  }
  if (view.rows.empty()) view.empty = texts("design.no.running.apps");
  const std::size_t count = selection().size();
  view.selectedText =
      texts("refine.apps.selected", {texts.format().wholeNumber(static_cast<std::int64_t>(count))});
  view.selectVisibleTitle = texts("refine.apps.select.visible");
  view.clearTitle = texts("Clear");
  view.canAdd = count > 0;
  view.refreshTitle = texts("design.refresh.apps");
  view.addTitle = texts("design.add.apps");
  view.cancelTitle = texts("Cancel");
  return view;
}

}  // namespace velotap
