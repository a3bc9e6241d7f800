// Finds the application that a window belongs to, among those that are installed.
//
// Toolkits, sandboxes and packagers disagree about what a window calls itself, so several rules
// are tried, from what was meant as an identifier to what merely resembles one:
//  1. the app id is a desktop-file id;
//  2. an entry claims the window's instance, class or app id with StartupWMClass;
//  3. class or instance is a desktop-file id, then all of these without regard to letter case and
//     with spaces as hyphens;
//  4. the last part of a reverse-domain id, and then the program that an entry starts, resembles
//     it, if only one entry does.
// Where several entries match a rule, one that menus show is preferred to a helper, then the first
// by identifier, so that the answer does not depend on the order of files.
//
// A plain value; not thread-safe; no input or output.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/linux/workspace/front_source.hpp"

namespace velotap {

struct InstalledApplication {
  std::string id;    ///< desktop-file id without the suffix: org.mozilla.firefox
  std::string name;  ///< localised
  std::string icon;  ///< a theme icon's name or an absolute path; may be empty
  std::string windowClass;
  std::string program;
  bool inMenus = true;
  std::string location{};  ///< path of the desktop entry
};

class ApplicationIndex {
 public:
  ApplicationIndex() = default;
  explicit ApplicationIndex(std::vector<InstalledApplication> applications);

  /// Null when no rule fits. `program` is the running program's base name; it counts only when the
  /// window does not say what it is.
  [[nodiscard]] const InstalledApplication* find(const FrontWindow& window,
                                                 std::string_view program = {}) const;
  [[nodiscard]] const InstalledApplication* byId(std::string_view id) const;
  [[nodiscard]] const std::vector<InstalledApplication>& all() const noexcept { return sorted_; }

 private:
  template <typename Matches>
  [[nodiscard]] const InstalledApplication* best(Matches matches) const;
  template <typename Matches>
  [[nodiscard]] const InstalledApplication* only(Matches matches) const;

  std::vector<InstalledApplication> sorted_;  ///< by identifier
};

/// What the desktop calls a desktop file, reduced to its id: no folder, no suffix.
[[nodiscard]] std::string desktopFileId(std::string_view text);

/// The identifier of a window for which no entry was found: the first of these that says anything.
[[nodiscard]] std::string identifierWithoutEntry(const FrontWindow& window,
                                                 std::string_view program);

}  // namespace velotap
