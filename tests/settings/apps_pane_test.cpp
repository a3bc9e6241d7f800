#include "settings/apps_pane.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake_applications.hpp"
#include "settings_fixture.hpp"

namespace velotap {
namespace {

using test::english;
using Ids = std::vector<std::string>;

class AppsPaneTest : public ::testing::Test {
 protected:
  AppsPaneTest() {
    applications.install("org.editor", "Editor");
    applications.install("org.browser", "Browser");
    settings.config.setIgnoredApps({"org.editor", "org.gone", "org.browser"});
    settings.config.setKeystrokeZoomApps({"org.browser"});
    pane.reload();
  }
  [[nodiscard]] AppsView view() const { return pane.view(english()); }

  test::StoredSettings settings;
  test::FakeApplications applications;
  std::vector<std::string> announced;
  AppsPane pane{settings.config,
                applications,
                [this](const std::string& text) { announced.push_back(text); },
                {}};
};

TEST_F(AppsPaneTest, ListsBothKindsOfRules) {
  const AppsView view = this->view();
  ASSERT_EQ(view.lists.size(), 2U);
  EXPECT_EQ(view.lists[0].title, "Velotap off in these apps");
  ASSERT_EQ(view.lists[0].rows.size(), 3U);
  EXPECT_EQ(view.lists[0].rows[0].name, "Browser");
  EXPECT_EQ(view.lists[0].rows[0].identifier, "org.browser");
  EXPECT_EQ(view.lists[0].rows[0].removeTitle, "Remove Browser");
  EXPECT_TRUE(view.lists[0].rows[0].canReveal);
  EXPECT_EQ(view.lists[0].rows[2].missing, "Not installed");
  EXPECT_EQ(view.lists[0].rows[2].resolveTitle, "Look Again");
  EXPECT_FALSE(view.lists[0].rows[2].canReveal);
  EXPECT_EQ(view.lists[1].title, "Send zoom keyboard shortcuts");
  EXPECT_EQ(view.count, "");
  EXPECT_EQ(view.unavailable, "");
}

TEST_F(AppsPaneTest, MarksARuleThatAnotherOverrides) {
  EXPECT_EQ(view().lists[0].rows[0].note, "");
  EXPECT_EQ(view().lists[1].rows[0].note, "Has no effect: Velotap is off in this app.");
  EXPECT_EQ(view().lists[1].rows[0].accessibilityLabel,
            "Browser, org.browser, Has no effect: Velotap is off in this app.");
  EXPECT_EQ(view().lists[0].rows[2].accessibilityLabel, "org.gone, Not installed");
}

TEST_F(AppsPaneTest, HidesIdentifiersOnRequest) {
  EXPECT_TRUE(view().showsIdentifiers);
  pane.setShowsIdentifiers(false);
  EXPECT_FALSE(view().showsIdentifiers);
  EXPECT_EQ(view().lists[0].rows[0].identifier, "");
  EXPECT_EQ(view().lists[0].rows[0].bundleID, "org.browser");
  EXPECT_FALSE(settings.defaults.boolean("settings.appRuleDetails"));
}

TEST_F(AppsPaneTest, RemembersTheOrder) {
  pane.setSort("identifier");
  EXPECT_EQ(view().sort, "identifier");
  EXPECT_EQ(settings.defaults.text("settings.appRuleSort"), "identifier");
}

TEST_F(AppsPaneTest, CountsWhatFiltersShow) {
  AppRuleFilter filter;
  filter.query = "browser";
  pane.setFilter(filter);
  EXPECT_EQ(view().count, "Showing 2 of 4 rules");
  filter.ruleType = "zoom";
  pane.setFilter(filter);
  EXPECT_EQ(view().count, "Showing 1 of 4 rules");
  EXPECT_EQ(view().lists.size(), 1U);
  EXPECT_EQ(view().filters.title, "Filter (1 active)");
  filter = {};
  filter.overriddenOnly = true;
  pane.setFilter(filter);
  EXPECT_EQ(view().count, "Showing 2 of 4 rules");
  pane.resetFilters();
  EXPECT_EQ(view().count, "");
  EXPECT_EQ(pane.filter().query, "");
}

TEST_F(AppsPaneTest, SaysThatNothingMatches) {
  AppRuleFilter filter;
  filter.query = "nothing";
  pane.setFilter(filter);
  EXPECT_EQ(view().noMatches, "No matching app rules");
  EXPECT_EQ(view().noMatchesHint,
            "Try another app name or identifier. Your saved rules are unchanged.");
  EXPECT_EQ(view().resetTitle, "Reset Filters");
  EXPECT_TRUE(view().lists.empty());
}

TEST_F(AppsPaneTest, SaysThatAListIsEmpty) {
  EXPECT_EQ(view().lists[0].empty, "");
  settings.config.setIgnoredApps({});
  settings.config.setKeystrokeZoomApps({});
  pane.reload();
  EXPECT_EQ(view().lists[0].empty, "No ignored apps");
  EXPECT_NE(view().lists[1].empty, "");
  EXPECT_FALSE(view().canRemoveVisible);
}

TEST_F(AppsPaneTest, UndoesARemovalInPlace) {
  pane.remove(AppRuleList::ignored, "org.gone", english());
  EXPECT_EQ(view().undoText, "Removed rule for org.gone");
  EXPECT_EQ(view().undoTitle, "Undo");
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"org.editor", "org.browser"}));
  pane.undo(english());
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"org.editor", "org.gone", "org.browser"}));
  EXPECT_EQ(view().undoTitle, "");
  EXPECT_EQ(view().undoText, "");
  EXPECT_EQ(view().feedback, "Rule restored");
  EXPECT_EQ(announced, (Ids{"Removed rule for org.gone", "Rule restored"}));
  pane.undo(english());
  EXPECT_EQ(announced.size(), 2U);
}

TEST_F(AppsPaneTest, AnUndoPutsTheOtherListBackTooAsItWas) {
  pane.remove(AppRuleList::keystrokeZoom, "org.browser", english());
  pane.add(AppRuleList::ignored, {"org.new"});
  pane.undo(english());
  EXPECT_EQ(settings.config.keystrokeZoomApps(), (Ids{"org.browser"}));
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"org.editor", "org.gone", "org.browser"}));
}

// The button takes back the removal, so the words beside it must not come to speak of anything
// else.
TEST_F(AppsPaneTest, WhatIsDoneAfterARemovalLeavesTheUndoUnderItsName) {
  pane.remove(AppRuleList::ignored, "org.gone", english());
  EXPECT_EQ(view().feedback, "");
  pane.add(AppRuleList::keystrokeZoom, {"org.new"});
  EXPECT_EQ(view().feedback, "Rule added");
  EXPECT_EQ(view().undoText, "Removed rule for org.gone");
  EXPECT_NE(view().undoNote, "");
  pane.noteCopied(english());
  EXPECT_EQ(view().undoText, "Removed rule for org.gone");
}

TEST_F(AppsPaneTest, WhatItSaysFollowsTheLanguage) {
  pane.remove(AppRuleList::ignored, "org.gone", english());
  pane.noteCopied(english());
  const AppsView german = pane.view(test::textsIn("de"));
  EXPECT_EQ(german.feedback, test::textsIn("de")("design.copied"));
  EXPECT_EQ(german.undoText, test::textsIn("de")("Removed rule for %@", {"org.gone"}));
}

TEST_F(AppsPaneTest, SaysThatNothingOfAListMatches) {
  AppRuleFilter filter;
  filter.query = "gone";  // of those without middle clicks alone
  pane.setFilter(filter);
  EXPECT_EQ(view().lists[0].empty, "");
  EXPECT_EQ(view().lists[1].empty, "No matching app rules");
  EXPECT_EQ(view().noMatches, "") << "the other list has some";
}

TEST_F(AppsPaneTest, ALaterRemovalReplacesTheUndo) {
  pane.remove(AppRuleList::ignored, "org.gone", english());
  pane.remove(AppRuleList::ignored, "org.editor", english());
  EXPECT_EQ(view().undoText, "Removed rule for Editor");
  pane.undo(english());
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"org.editor", "org.browser"}));
}

TEST_F(AppsPaneTest, RemovesAndRestoresWhatIsShown) {
  AppRuleFilter filter;
  filter.availability = "installed";
  pane.setFilter(filter);
  EXPECT_EQ(pane.view(english()).removeVisible.confirm, "Remove (3)");
  pane.removeVisible(english());
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"org.gone"}));
  EXPECT_TRUE(settings.config.keystrokeZoomApps().empty());
  EXPECT_EQ(view().undoText, "Rules removed");
  pane.undo(english());
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"org.editor", "org.gone", "org.browser"}));
  EXPECT_EQ(settings.config.keystrokeZoomApps(), (Ids{"org.browser"}));
}

TEST_F(AppsPaneTest, RemovingNothingKeepsTheUndo) {
  pane.remove(AppRuleList::ignored, "org.gone", english());
  AppRuleFilter filter;
  filter.query = "nothing";
  pane.setFilter(filter);
  pane.removeVisible(english());
  pane.undo(english());
  EXPECT_EQ(settings.config.ignoredApps().size(), 3U);
}

TEST_F(AppsPaneTest, AddsASuggestion) {
  EXPECT_EQ(view().suggestions.size(), 6U);
  EXPECT_EQ(view().suggestions[0].addTitle, "Add com.parallels.desktop.console");
  pane.addSuggestion("com.vmware.fusion");
  EXPECT_EQ(view().suggestions.size(), 5U);
  EXPECT_EQ(view().feedback, "Rule added");
  EXPECT_EQ(settings.config.ignoredApps().back(), "com.vmware.fusion");
}

TEST_F(AppsPaneTest, SuggestsWhatIsThereWhereTheListIsOfManySystems) {
  const AppsPane linux(settings.config, applications, [](const std::string&) {},
                       {.compatibility = compatibilityAppsOfLinux(),
                        .suggestsInstalledOnly = true,
                        .hidesFrontApplication = true});
  EXPECT_EQ(linux.view(english()).noSuggestions, "No compatibility apps");
  EXPECT_NE(linux.view(english()).unavailable, "");
  applications.install("steam", "Steam");
  const AppsView view = linux.view(english());
  ASSERT_EQ(view.suggestions.size(), 1U);
  EXPECT_EQ(view.suggestions[0].addTitle, "Add Steam");
  EXPECT_EQ(view.noSuggestions, "");
}

TEST_F(AppsPaneTest, FindsAnAppThatWasInstalledMeanwhile) {
  EXPECT_FALSE(pane.resolve("org.gone"));
  EXPECT_EQ(view().feedback, "The app is still not installed.");
  applications.install("org.gone", "Gone");
  EXPECT_TRUE(pane.resolve("org.gone"));
  EXPECT_EQ(view().feedback, "The app was found.");
  EXPECT_EQ(view().lists[0].rows[2].name, "Gone");
  EXPECT_EQ(view().lists[0].rows[2].missing, "");
  pane.noteCopied(english());
  EXPECT_EQ(view().feedback, "Copied");
}

}  // namespace
}  // namespace velotap
