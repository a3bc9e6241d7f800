#include "settings/settings_search_index.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "settings_fixture.hpp"

namespace velotap {
namespace {

using test::english;
using Entry = SettingsSearchIndex::Entry;

std::vector<std::string> ids(std::string_view query, const Texts& texts) {
  std::vector<std::string> result;
  for (const Entry& entry : SettingsSearchIndex::matches(query, texts)) {
    result.push_back(entry.id());
  }
  return result;
}

TEST(SettingsSearchIndex, HoldsEachPaneBeforeItsControls) {
  std::vector<std::string> held;
  for (const Entry& entry : SettingsSearchIndex::entries()) held.push_back(entry.id());
  EXPECT_EQ(held, (std::vector<std::string>{"0.General",
                                            "0.Enable Velotap",
                                            "0.Launch at Login",
                                            "0.Left-click toggles Velotap",
                                            "0.Hide menu bar icon",
                                            "0.Startup and menu bar",
                                            "0.Check for Updates…",
                                            "0.Accessibility Setup…",
                                            "1.Gestures",
                                            "1.Middle click",
                                            "1.More gestures",
                                            "1.Click with One Finger in Center",
                                            "1.Click with Two Fingers",
                                            "1.Click with Three Fingers",
                                            "1.Tap with Three Fingers",
                                            "1.Tap with Four Fingers",
                                            "1.Pinch to Zoom",
                                            "1.Rotate with Two Fingers",
                                            "1.3-Finger Swipe: Back/Forward",
                                            "1.Try a middle click",
                                            "2.Tuning",
                                            "2.Tap detection",
                                            "2.design.tap.presets",
                                            "2.Max tap duration",
                                            "2.Finger drift tolerance",
                                            "2.Recent taps",
                                            "2.Pinch to zoom",
                                            "2.Sensitivity",
                                            "2.One-finger center click band",
                                            "2.Restore Default Tuning",
                                            "3.Apps",
                                            "3.Velotap off in these apps",
                                            "3.Send zoom keyboard shortcuts",
                                            "3.Suggestions",
                                            "4.About",
                                            "4.Contact Support…",
                                            "4.design.support.snapshot",
                                            "4.Privacy Policy",
                                            "4.Acknowledgements"}));
}

TEST(SettingsSearchIndex, EachEntryHasTheDescriptionOfItsPane) {
  constexpr std::array<std::string_view, 5> kDescriptions = {
      "design.search.general", "design.search.gestures", "design.search.tuning",
      "design.search.apps", "design.search.about"};
  std::size_t panes = 0;
  for (const Entry& entry : SettingsSearchIndex::entries()) {
    EXPECT_EQ(entry.detail, kDescriptions.at(static_cast<std::size_t>(entry.pane))) << entry.id();
    panes += entry.isPane() ? 1 : 0;
  }
  EXPECT_EQ(panes, 5U);
}

// "Pinch to zoom" stands in two panes and is found in both.
TEST(SettingsSearchIndex, NothingIsFoundTwiceUnderOneIdentity) {
  std::set<std::string> held;
  for (const Entry& entry : SettingsSearchIndex::entries()) held.insert(entry.id());
  EXPECT_EQ(held.size(), SettingsSearchIndex::entries().size());
}

TEST(SettingsSearchIndex, EmptyQueriesListThePanes) {
  const std::vector<std::string> panes = {"0.General", "1.Gestures", "2.Tuning", "3.Apps",
                                          "4.About"};
  EXPECT_EQ(ids("", english()), panes);
  EXPECT_EQ(ids(" \n\t ", english()), panes);
}

TEST(SettingsSearchIndex, ListsControlsBeforePanes) {
  const auto found = ids("tap", english());
  const std::vector<std::string> first(found.begin(), found.begin() + 4);
  EXPECT_EQ(first,
            (std::vector<std::string>{"0.Enable Velotap", "0.Left-click toggles Velotap",
                                      "1.Tap with Three Fingers", "1.Tap with Four Fingers"}));
  const auto pane = std::find(found.begin(), found.end(), "1.Gestures");
  ASSERT_NE(pane, found.end());
  EXPECT_EQ(std::vector<std::string>(pane, found.end()),
            (std::vector<std::string>{"1.Gestures", "2.Tuning"}));
}

TEST(SettingsSearchIndex, FindsAPaneByItsDescriptionAlone) {
  EXPECT_EQ(ids("licenses", english()), (std::vector<std::string>{"4.About"}));
  EXPECT_EQ(ids("about", english()), (std::vector<std::string>{"4.About"}));
}

TEST(SettingsSearchIndex, IgnoresCaseAndMarks) {
  EXPECT_EQ(ids("  PINCH ", english()),
            (std::vector<std::string>{"1.Pinch to Zoom", "2.Pinch to zoom", "1.Gestures"}));
  EXPECT_EQ(ids("PÍNCH TO", english()),
            (std::vector<std::string>{"1.Pinch to Zoom", "2.Pinch to zoom"}));
  EXPECT_EQ(ids("a PROPOS", test::textsIn("fr")), (std::vector<std::string>{"4.About"}));
  EXPECT_EQ(ids("ОТНОСНО", test::textsIn("bg")), (std::vector<std::string>{"4.About"}));
}

TEST(SettingsSearchIndex, SearchesTheWordsOfTheLanguage) {
  EXPECT_EQ(ids("Anmeldung", test::textsIn("de")), (std::vector<std::string>{"0.Launch at Login"}));
  EXPECT_TRUE(ids("Login", test::textsIn("bg")).empty());
}

// Every control of the index has words of its own in every language.
TEST(SettingsSearchIndex, IsTranslatedWhole) {
  for (const std::string& language : Localization::shared().languages()) {
    const Texts texts = test::textsIn(language);
    for (const Entry& entry : SettingsSearchIndex::entries()) {
      const auto& table = Localization::shared().bundle(std::vector<std::string>{language}).texts();
      EXPECT_TRUE(table.contains(entry.text)) << language << ": " << entry.text;
      EXPECT_TRUE(table.contains(entry.detail)) << language << ": " << entry.detail;
    }
  }
}

TEST(SettingsSearchView, ShowsNothingWhileTheQueryIsBlank) {
  EXPECT_FALSE(settingsSearchView("", english()).showsClear);
  const SettingsSearchView blank = settingsSearchView("  ", english());
  EXPECT_TRUE(blank.showsClear);
  EXPECT_FALSE(blank.showsResults);
  EXPECT_TRUE(blank.rows.empty());
  EXPECT_EQ(blank.noMatches, "");
  EXPECT_EQ(blank.placeholder, "Search settings");
}

TEST(SettingsSearchView, ShowsEightRowsAtMost) {
  EXPECT_GT(SettingsSearchIndex::matches("e", english()).size(), 8U);
  EXPECT_EQ(settingsSearchView("e", english()).rows.size(), 8U);
}

TEST(SettingsSearchView, SaysWhereAHitLeads) {
  const SettingsSearchView view = settingsSearchView("launch", english());
  ASSERT_EQ(view.rows.size(), 1U);
  EXPECT_EQ(view.rows[0].title, "Launch at Login");
  EXPECT_EQ(view.rows[0].pane, PreferencesTab::general);
  EXPECT_EQ(view.rows[0].caption, "General · Status, startup, menu bar and updates");
  EXPECT_EQ(view.noMatches, "");
}

TEST(SettingsSearchView, SaysThatThereIsNothing) {
  const SettingsSearchView view = settingsSearchView("zebra", english());
  EXPECT_TRUE(view.showsResults);
  EXPECT_TRUE(view.rows.empty());
  EXPECT_EQ(view.noMatches, "No matching settings");
}

}  // namespace
}  // namespace velotap
