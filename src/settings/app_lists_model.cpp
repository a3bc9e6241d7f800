#include "settings/app_lists_model.hpp"

#include <algorithm>

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

bool contains(const std::vector<std::string>& ids, std::string_view id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

AppListsModel::AppListsModel(Config& config, Applications& applications,
                             std::span<const std::string_view> compatibility)
    : config_(config), applications_(applications), compatibility_(compatibility) {
  reload();
}

AppEntry AppListsModel::entry(const std::string& bundleID) const {
  return appEntry(bundleID, applications_.find(bundleID));
}

std::vector<AppEntry> AppListsModel::entries(const std::vector<std::string>& ids) const {
  std::vector<AppEntry> result;
  result.reserve(ids.size());
  for (const std::string& id : ids) result.push_back(entry(id));
  AppRuleFilter order;
  order.sort = config_.defaults().text(keys::kAppRuleSort).value_or(order.sort);
  return order.matching(std::move(result));
}

void AppListsModel::reload() {
  const std::vector<std::string> ignoredIds = config_.ignoredApps();
  ignored_ = entries(ignoredIds);
  zoom_ = entries(config_.keystrokeZoomApps());
  suggestions_.clear();
  for (const std::string_view id : compatibility_) {
    if (!contains(ignoredIds, id)) suggestions_.emplace_back(id);
  }
}

void AppListsModel::addIgnored(const std::string& bundleID) {
  std::vector<std::string> ids = config_.ignoredApps();
  if (contains(ids, bundleID)) return;
  ids.push_back(bundleID);
  config_.setIgnoredApps(ids);
  reload();
}

void AppListsModel::addKeystrokeZoom(const std::string& bundleID) {
  std::vector<std::string> ids = config_.keystrokeZoomApps();
  if (contains(ids, bundleID)) return;
  ids.push_back(bundleID);
  config_.setKeystrokeZoomApps(ids);
  reload();
}

void AppListsModel::removeIgnored(std::string_view bundleID) {
  std::vector<std::string> ids = config_.ignoredApps();
  std::erase(ids, bundleID);
  config_.setIgnoredApps(ids);
  reload();
}

void AppListsModel::removeKeystrokeZoom(std::string_view bundleID) {
  std::vector<std::string> ids = config_.keystrokeZoomApps();
  std::erase(ids, bundleID);
  config_.setKeystrokeZoomApps(ids);
  reload();
}

AppRuleSnapshot AppListsModel::snapshot() const {
  return {.ignored = config_.ignoredApps(), .keystrokeZoom = config_.keystrokeZoomApps()};
}

void AppListsModel::restore(const AppRuleSnapshot& snapshot) {
  config_.setIgnoredApps(snapshot.ignored);
  config_.setKeystrokeZoomApps(snapshot.keystrokeZoom);
  reload();
}

std::set<std::string, std::less<>> AppListsModel::overriddenIDs() const {
  std::set<std::string, std::less<>> off;
  for (const AppEntry& entry : ignored_) off.insert(entry.bundleID);
  std::set<std::string, std::less<>> result;
  for (const AppEntry& entry : zoom_) {
    if (off.contains(entry.bundleID)) result.insert(entry.bundleID);
  }
  return result;
}

}  // namespace velotap
