// What the settings search finds: panes, and the controls in them, by the labels that they show.
//
// Built once, then read only. Main thread. A hit names a pane to show; it does not scroll to the
// control.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "localization/texts.hpp"
#include "settings/preferences_tabs.hpp"

namespace velotap {

class SettingsSearchIndex {
 public:
  struct Entry {
    PreferencesTab pane = PreferencesTab::general;
    std::string_view text{};    ///< key; the pane's label for the entry that stands for the pane
    std::string_view detail{};  ///< key of the pane's description

    /// "0.Launch at Login"
    [[nodiscard]] std::string id() const;
    [[nodiscard]] bool isPane() const { return text == preferencesTabLabel(pane); }
  };

  /// Each pane followed by its controls.
  [[nodiscard]] static const std::vector<Entry>& entries();

  /// Controls before panes, each in the order of the index; all panes, and no controls, for a query
  /// without anything but white space.
  [[nodiscard]] static std::vector<Entry> matches(std::string_view query, const Texts& texts);
};

/// What stands under the search field.
struct SettingsSearchView {
  struct Row {
    std::string id;
    PreferencesTab pane = PreferencesTab::general;
    std::string title;
    std::string caption;  ///< the pane's name, and what the pane is about
    friend bool operator==(const Row&, const Row&) = default;
  };
  static constexpr std::size_t kMostRows = 8;

  std::string placeholder;
  std::string clearTitle;
  bool showsClear = false;    ///< while the query is not empty, be it blank
  bool showsResults = false;  ///< rows, or the sentence that there are none
  std::vector<Row> rows;
  std::string noMatches;  ///< empty while there are rows
};

[[nodiscard]] SettingsSearchView settingsSearchView(std::string_view query, const Texts& texts);

}  // namespace velotap
