// Rules for single applications as they are listed: names, filter, order, undo, suggestions.
//
// Pure values; any thread. Identifiers are compared exactly; texts are searched without regard to
// case and marks.
#pragma once

#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/applications.hpp"

namespace velotap {

struct AppEntry {
  std::string bundleID;
  std::string name;
  std::optional<std::string> url;  ///< where the application is

  [[nodiscard]] bool isInstalled() const noexcept { return url.has_value(); }
  friend bool operator==(const AppEntry&, const AppEntry&) = default;
};

/// Named as the application names itself, else after its file, else by its identifier.
[[nodiscard]] AppEntry appEntry(std::string_view bundleID,
                                const std::optional<ApplicationBundle>& application);

struct AppRuleFilter {
  std::string query{};
  std::string ruleType = "all";      ///< "all", "ignored", "zoom"
  std::string availability = "all";  ///< "all", "installed"; any other value: missing
  bool overriddenOnly = false;
  std::set<std::string, std::less<>> overriddenIDs{};
  std::string sort = "name";  ///< "identifier"; any other value: by name

  /// Filtered and sorted. The rule type is the caller's matter, who has one list for each.
  [[nodiscard]] std::vector<AppEntry> matching(std::vector<AppEntry> entries) const;
  [[nodiscard]] bool showsIgnored() const { return ruleType != "zoom"; }
  [[nodiscard]] bool showsZoom() const { return ruleType != "ignored"; }
  /// Rule type, availability and overridden; neither order nor query count.
  [[nodiscard]] int activeCount() const;
  [[nodiscard]] bool hidesAnything() const;
};

/// Both lists as they were.
struct AppRuleSnapshot {
  std::vector<std::string> ignored;
  std::vector<std::string> keystrokeZoom;
};

struct AppRuleUndo {
  AppRuleSnapshot snapshot;
  std::vector<std::string> bundleIDs;  ///< whose removal it undoes; more than one for a batch
};

/// Virtual machines, remote desktops and games that take raw pointer input themselves, where
/// middle clicks of ours and swallowed clicks do harm.
[[nodiscard]] std::span<const std::string_view> compatibilityApps() noexcept;
/// The same, followed by the same kinds of applications under the names of their desktop entries.
[[nodiscard]] std::span<const std::string_view> compatibilityAppsOfLinux() noexcept;

}  // namespace velotap
