#include "settings/settings_search_index.hpp"

#include <algorithm>
#include <array>
#include <span>

#include "localization/text_search.hpp"

namespace velotap {
namespace {

constexpr std::array<std::string_view, 7> kGeneral = {
    "Enable Velotap",      "Launch at Login",      "Left-click toggles Velotap",
    "Hide menu bar icon",  "Startup and menu bar", "Check for Updates…",
    "Accessibility Setup…"};
constexpr std::array<std::string_view, 11> kGestures = {"Middle click",
                                                        "More gestures",
                                                        "Click with One Finger in Center",
                                                        "Click with Two Fingers",
                                                        "Click with Three Fingers",
                                                        "Tap with Three Fingers",
                                                        "Tap with Four Fingers",
                                                        "Pinch to Zoom",
                                                        "Rotate with Two Fingers",
                                                        "3-Finger Swipe: Back/Forward",
                                                        "Try a middle click"};
constexpr std::array<std::string_view, 9> kTuning = {
    "Tap detection",         "design.tap.presets",
    "Max tap duration",      "Finger drift tolerance",
    "Recent taps",           "Pinch to zoom",
    "Sensitivity",           "One-finger center click band",
    "Restore Default Tuning"};
constexpr std::array<std::string_view, 3> kApps = {"Velotap off in these apps",
                                                   "Send zoom keyboard shortcuts", "Suggestions"};
constexpr std::array<std::string_view, 4> kAbout = {"Contact Support…", "design.support.snapshot",
                                                    "Privacy Policy", "Acknowledgements"};

struct Pane {
  PreferencesTab tab;
  std::string_view description;
  std::span<const std::string_view> keywords;
};

const std::array kPanes = {
    Pane{PreferencesTab::general, "design.search.general", kGeneral},
    Pane{PreferencesTab::gestures, "design.search.gestures", kGestures},
    Pane{PreferencesTab::tuning, "design.search.tuning", kTuning},
    Pane{PreferencesTab::apps, "design.search.apps", kApps},
    Pane{PreferencesTab::about, "design.search.about", kAbout},
};

}  // namespace

std::string SettingsSearchIndex::Entry::id() const {
  return std::to_string(static_cast<int>(pane)) + "." + std::string(text);
}

const std::vector<SettingsSearchIndex::Entry>& SettingsSearchIndex::entries() {
  static const std::vector<Entry> kEntries = [] {
    std::vector<Entry> result;
    for (const Pane& pane : kPanes) {
      result.push_back({pane.tab, preferencesTabLabel(pane.tab), pane.description});
      for (const auto keyword : pane.keywords) {
        result.push_back({pane.tab, keyword, pane.description});
      }
    }
    return result;
  }();
  return kEntries;
}

std::vector<SettingsSearchIndex::Entry> SettingsSearchIndex::matches(std::string_view query,
                                                                     const Texts& texts) {
  const std::string_view wanted = trimmedText(query);
  std::vector<Entry> found;
  const auto append = [&found](auto&& fits) {
    std::copy_if(entries().begin(), entries().end(), std::back_inserter(found), fits);
  };
  if (!wanted.empty()) {
    append([&](const Entry& entry) {
      return !entry.isPane() && containsText(texts(entry.text), wanted);
    });
  }
  append([&](const Entry& entry) {
    return entry.isPane() && (wanted.empty() || containsText(texts(entry.text), wanted) ||
                              containsText(texts(entry.detail), wanted));
  });
  return found;
}

SettingsSearchView settingsSearchView(std::string_view query, const Texts& texts) {
  SettingsSearchView view;
  view.placeholder = texts("design.search.settings");
  view.clearTitle = texts("Clear search");
  view.showsClear = !query.empty();
  view.showsResults = !trimmedText(query).empty();
  if (!view.showsResults) return view;
  for (const auto& entry : SettingsSearchIndex::matches(query, texts)) {
    if (view.rows.size() == SettingsSearchView::kMostRows) break;
    view.rows.push_back({.id = entry.id(),
                         .pane = entry.pane,
                         .title = texts(entry.text),
                         .caption = entry.isPane() ? texts(entry.detail)
                                                   : texts(preferencesTabLabel(entry.pane)) +
                                                         " · " + texts(entry.detail)});
  }
  if (view.rows.empty()) view.noMatches = texts("design.search.no.settings");
  return view;
}

}  // namespace velotap
