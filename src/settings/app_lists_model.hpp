// Both lists of application rules, and the suggestions, as the settings hold them now.
//
// Main thread. Keeps nothing that the settings do not hold; `reload` reads them anew, and whoever
// shows them calls it when the settings changed.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/config.hpp"
#include "platform/applications.hpp"
#include "settings/app_rules.hpp"

namespace velotap {

class AppListsModel {
 public:
  AppListsModel(Config& config, Applications& applications,
                std::span<const std::string_view> compatibility = compatibilityApps());

  [[nodiscard]] const std::vector<AppEntry>& ignored() const noexcept { return ignored_; }
  [[nodiscard]] const std::vector<AppEntry>& keystrokeZoom() const noexcept { return zoom_; }
  /// Identifiers that are not ignored yet, in the order of the compatibility list.
  [[nodiscard]] const std::vector<std::string>& suggestions() const noexcept {
    return suggestions_;
  }
  [[nodiscard]] AppEntry entry(const std::string& bundleID) const;

  void reload();

  void addIgnored(const std::string& bundleID);
  void addKeystrokeZoom(const std::string& bundleID);
  /// Every occurrence.
  void removeIgnored(std::string_view bundleID);
  void removeKeystrokeZoom(std::string_view bundleID);

  [[nodiscard]] AppRuleSnapshot snapshot() const;
  void restore(const AppRuleSnapshot& snapshot);

  /// Applications whose being switched off overrides their zoom rule.
  [[nodiscard]] std::set<std::string, std::less<>> overriddenIDs() const;

 private:
  [[nodiscard]] std::vector<AppEntry> entries(const std::vector<std::string>& ids) const;

  Config& config_;
  Applications& applications_;
  std::span<const std::string_view> compatibility_;
  std::vector<AppEntry> ignored_;
  std::vector<AppEntry> zoom_;
  std::vector<std::string> suggestions_;
};

}  // namespace velotap
