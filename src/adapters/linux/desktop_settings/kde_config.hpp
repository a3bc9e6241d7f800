// Reads the configuration files of KDE: groups that nest, keys and values, laid over one another.
//
// Pure; any thread. Unreadable lines are skipped, as KDE does. Only the first few escapes that
// group names and values use are undone; translations of a key (`Name[de]`) are left out.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace velotap {

class KdeConfig {
 public:
  using Group = std::vector<std::string>;  ///< names from the outermost inwards
  using Entries = std::map<std::string, std::string, std::less<>>;

  /// Lays the text of one more file over what was read before: the system's first, the user's
  /// last. What a file marks as immutable stays as it is.
  void add(std::string_view text);

  [[nodiscard]] const std::map<Group, Entries>& groups() const noexcept { return groups_; }

 private:
  void addEntry(const Group& group, std::string_view line);

  std::map<Group, Entries> groups_;
  std::map<Group, std::set<std::string, std::less<>>> immutableKeys_;
  std::set<Group> immutableGroups_;
};

/// As KDE writes and understands them; nothing for any other text.
[[nodiscard]] std::optional<bool> kdeBoolean(std::string_view text) noexcept;
[[nodiscard]] std::optional<int> kdeInteger(std::string_view text) noexcept;

}  // namespace velotap
