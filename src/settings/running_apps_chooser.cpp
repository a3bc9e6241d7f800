#include "settings/running_apps_chooser.hpp"

#include <algorithm>

#include "localization/text_search.hpp"

namespace velotap {
namespace {

// Each application once, without those that are taken.
class Candidates {
 public:
  Candidates(const std::vector<std::string>& excluding, std::string_view ownBundleID)
      : taken_(excluding.begin(), excluding.end()) {
    taken_.emplace(ownBundleID);
  }

  void add(AppEntry entry) {
    if (entry.bundleID.empty() || !taken_.insert(entry.bundleID).second) return;
    entries_.push_back(std::move(entry));
  }
  [[nodiscard]] std::vector<AppEntry> sorted() {
    return AppRuleFilter{}.matching(std::move(entries_));
  }

 private:
  std::set<std::string, std::less<>> taken_;
  std::vector<AppEntry> entries_;
};

}  // namespace

std::vector<AppEntry> RunningAppCandidates::filter(const std::vector<std::string>& excluding,
                                                   std::string_view ownBundleID) const {
  Candidates candidates(excluding, ownBundleID);
  for (const RunningInstance& each : running) {
    if (!each.regular) continue;
    candidates.add({.bundleID = each.bundleId,
                    .name = each.name.empty() ? each.bundleId : each.name,
                    .url = {}});
  }
  return candidates.sorted();
}

std::vector<AppEntry> InstalledAppCandidates::filter(const std::vector<std::string>& excluding,
                                                     std::string_view ownBundleID) const {
  Candidates candidates(excluding, ownBundleID);
  for (const ApplicationBundle& each : installed) candidates.add(appEntry(each.bundleId, each));
  return candidates.sorted();
}

RunningAppsChooser::RunningAppsChooser(std::vector<AppEntry> candidates, AppsOffered offered)
    : candidates_(std::move(candidates)), offered_(offered) {}

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
  const bool running = offered_ == AppsOffered::running;
  view.title = texts(running ? "Running Apps" : "apps.choose.title");
  view.searchPlaceholder = texts(running ? "design.search.running" : "apps.choose.search");
  if (!running) {
    view.message = texts("Choose one or more apps to add.");
    view.fileTitle = texts("apps.choose.file");
  }
  for (const AppEntry& entry : visible()) {
    const bool selected = selected_.contains(entry.bundleID);
    view.rows.push_back({.bundleID = entry.bundleID, .name = entry.name, .selected = selected});
    view.canSelectVisible = view.canSelectVisible || !selected;
  }
  if (view.rows.empty()) {
    view.empty =
        texts(candidates_.empty() || running ? "design.no.running.apps" : "apps.choose.none");
  }
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
