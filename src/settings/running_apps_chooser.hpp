// Choosing applications to make a rule for: among those that run, or those that are installed.
//
// The chooser is the state of one sheet: main thread. The candidates are pure.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "localization/texts.hpp"
#include "platform/applications.hpp"
#include "settings/app_rules.hpp"

namespace velotap {

/// What may be chosen.
struct RunningAppCandidates {
  std::vector<RunningInstance> running;

  /// Regular applications other than the program itself and those that have a rule, each once,
  /// sorted by name. One without an identifier can have no rule.
  [[nodiscard]] std::vector<AppEntry> filter(const std::vector<std::string>& excluding,
                                             std::string_view ownBundleID) const;
};

struct InstalledAppCandidates {
  std::vector<ApplicationBundle> installed;

  /// The same for everything that a person could start.
  [[nodiscard]] std::vector<AppEntry> filter(const std::vector<std::string>& excluding,
                                             std::string_view ownBundleID) const;
};

enum class AppsOffered { running, installed };

struct RunningAppsView {
  struct Row {
    std::string bundleID;
    std::string name;
    bool selected = false;
  };
  std::string title;
  std::string message;  ///< what to do; empty where the title says it
  std::string searchPlaceholder;
  std::vector<Row> rows;
  std::string empty;         ///< why there are no rows; empty while there are
  std::string selectedText;  ///< how many are selected
  std::string selectVisibleTitle;
  bool canSelectVisible = false;
  std::string clearTitle;
  bool canAdd = false;  ///< something is selected, so it can be cleared too
  std::string refreshTitle;
  std::string fileTitle;  ///< for what no list has; empty where there is no such way
  std::string addTitle;
  std::string cancelTitle;
};

class RunningAppsChooser {
 public:
  explicit RunningAppsChooser(std::vector<AppEntry> candidates,
                              AppsOffered offered = AppsOffered::running);

  [[nodiscard]] AppsOffered offered() const noexcept { return offered_; }
  /// Listed again; what is selected and still there stays selected.
  void refresh(std::vector<AppEntry> candidates);
  void setQuery(std::string query) { query_ = std::move(query); }
  void toggle(const std::string& bundleID);
  void selectVisible();
  void clearSelection() { selected_.clear(); }
  /// In the order of the list, whatever the search shows.
  [[nodiscard]] std::vector<std::string> selection() const;

  [[nodiscard]] RunningAppsView view(const Texts& texts) const;

 private:
  [[nodiscard]] std::vector<AppEntry> visible() const;

  std::vector<AppEntry> candidates_;
  AppsOffered offered_;
  std::string query_;
  std::set<std::string, std::less<>> selected_;
};

}  // namespace velotap
