// The Apps pane: the rules for single applications, filtered, added, removed and given back.
//
// Main thread. Lives as long as the window; the undo and the filters go with it, the order and
// whether identifiers show are remembered in the settings. The view asks for a new `AppsView` after
// every call and whenever the settings changed.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/defaults_store.hpp"
#include "localization/texts.hpp"
#include "settings/app_lists_model.hpp"
#include "settings/app_rules.hpp"
#include "settings/confirmation.hpp"
#include "settings/filter_disclosure.hpp"

namespace velotap {

enum class AppRuleList { ignored, keystrokeZoom };

struct AppRow {
  std::string bundleID;
  std::string name;
  std::string identifier;  ///< empty while identifiers are hidden
  std::string url;         ///< empty when the application is missing
  std::string missing;     ///< empty when it is installed
  std::string resolveTitle;
  std::string note;  ///< that another rule overrides this one
  std::string revealTitle;
  bool canReveal = false;
  std::string copyTitle;
  std::string removeTitle;
  std::string accessibilityLabel;
};

struct AppListView {
  AppRuleList list = AppRuleList::ignored;
  std::string title;
  std::vector<AppRow> rows;
  std::string empty;     ///< why there are no rows; empty while there are
  std::string addTitle;  ///< of the menu with the ways to add
};

struct AppSuggestionRow {
  std::string bundleID;
  std::string name;
  std::string addTitle;
};

struct AppsView {
  std::string introTitle;
  std::string introText;
  std::string_view introSymbol = "app.badge.checkmark";
  std::string unavailable;  ///< why rules cannot apply on this desktop; empty where they do

  std::string searchPlaceholder;
  std::string searchLabel;
  std::string clearSearch;
  bool showsClearSearch = false;

  SettingsFilterDisclosure filters;
  std::string ruleTypeTitle;
  std::vector<std::pair<std::string_view, std::string>> ruleTypes;
  std::string availabilityTitle;
  std::vector<std::pair<std::string_view, std::string>> availabilities;
  std::string overriddenTitle;
  std::string sortTitle;
  std::vector<std::pair<std::string_view, std::string>> sorts;
  std::string_view sort;
  std::string identifiersTitle;
  bool showsIdentifiers = true;

  std::string count;  ///< shown of all; empty while nothing is hidden
  std::vector<AppListView> lists;
  std::string noMatches;
  std::string noMatchesHint;
  std::string resetTitle;

  std::string removeVisibleTitle;
  bool canRemoveVisible = false;
  Confirmation removeVisible;  ///< to be asked first
  std::string feedback;        ///< what was just done, other than a removal
  std::string undoText;        ///< what was removed; empty without an undo
  std::string undoTitle;
  std::string undoNote;

  std::string suggestionsTitle;
  std::vector<AppSuggestionRow> suggestions;
  std::string noSuggestions;

  std::string addTitle;
  std::string chooseTitle;
  std::string runningTitle;
  bool listsInstalled = false;  ///< choosing is from a list of ours instead of the system's panel
};

class AppsPane {
 public:
  using Announce = std::function<void(const std::string& text)>;
  struct Options {
    std::span<const std::string_view> compatibility = compatibilityApps();
    /// Where identifiers of several systems are on the list, only what is here is suggested.
    bool suggestsInstalledOnly = false;
    bool hidesFrontApplication = false;  ///< the desktop does not tell, so rules cannot apply
    /// Where the system has no panel to choose applications by name and icon.
    bool listsInstalled = false;
  };

  AppsPane(Config& config, Applications& applications, Announce announce, Options options);

  [[nodiscard]] AppsView view(const Texts& texts) const;
  [[nodiscard]] const AppListsModel& model() const noexcept { return model_; }
  void reload() { model_.reload(); }

  /// The order and the overridden identifiers are the pane's own matter.
  [[nodiscard]] const AppRuleFilter& filter() const noexcept { return filter_; }
  void setFilter(AppRuleFilter filter) { filter_ = std::move(filter); }
  void resetFilters() { filter_ = {}; }
  void setSort(std::string_view sort);
  void setShowsIdentifiers(bool shown);

  void add(AppRuleList list, const std::vector<std::string>& bundleIDs);
  void addSuggestion(const std::string& bundleID);
  void remove(AppRuleList list, const std::string& bundleID, const Texts& texts);
  void removeVisible(const Texts& texts);
  [[nodiscard]] bool canUndo() const noexcept { return undo_.has_value(); }
  void undo(const Texts& texts);

  /// Looks for a missing application again and says whether it is there now.
  bool resolve(const std::string& bundleID);
  /// To be called when the identifier reached the pasteboard.
  void noteCopied(const Texts& texts);

 private:
  [[nodiscard]] AppRuleFilter effectiveFilter() const;
  [[nodiscard]] std::vector<AppEntry> shown(AppRuleList list) const;
  [[nodiscard]] AppRow row(const AppEntry& entry, bool overridden, const Texts& texts) const;
  [[nodiscard]] bool showsIdentifiers() const;
  [[nodiscard]] std::string undoText(const Texts& texts) const;
  [[nodiscard]] AppListView list(AppRuleList which, const std::vector<AppEntry>& shown,
                                 const Texts& texts) const;
  void addFilters(const Texts& texts, AppsView& view) const;
  void addLists(const Texts& texts, AppsView& view) const;
  void addSuggestions(const Texts& texts, AppsView& view) const;

  Config& config_;
  AppListsModel model_;
  Announce announce_;
  Options options_;
  AppRuleFilter filter_;
  std::optional<AppRuleUndo> undo_;
  std::optional<std::string> removedName_;  ///< nothing after the removal of several rules
  std::string_view feedback_;               ///< a key, so that it follows the language
};

}  // namespace velotap
