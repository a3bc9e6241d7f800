// Reads one desktop entry: the text file that gives an application its name and icon and says how
// its windows are recognised.
//
// Pure functions over text; any thread. Lines that make no sense are skipped, as every desktop
// does; a file without a usable [Desktop Entry] group gives nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velotap {

struct DesktopEntry {
  std::string name;         ///< in the best of the languages asked for
  std::string icon;         ///< a theme icon's name or an absolute path; may be empty
  std::string windowClass;  ///< StartupWMClass; may be empty
  std::string program;      ///< base name of what Exec really runs; empty when that says nothing
  bool hidden = false;      ///< the application counts as not installed
  bool inMenus = true;      ///< false for helpers that menus do not show
};

/// `languages` are suffixes of localised keys, best first: "de_AT", "de". Nothing unless the entry
/// describes an application with a name, or hides one.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(
    std::string_view text, const std::vector<std::string>& languages);

/// The key suffixes for a locale's name, best first: "sr_RS.UTF-8@latin" asks for sr_RS@latin,
/// sr_RS, sr@latin and sr. None for C and POSIX.
[[nodiscard]] std::vector<std::string> languageSuffixes(std::string_view locale);

/// The program behind an Exec value: its base name without wrappers and interpreters, the command
/// inside a sandbox where one is named, otherwise empty.
[[nodiscard]] std::string programOfExec(std::string_view exec);

}  // namespace velotap
