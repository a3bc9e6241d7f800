#include "settings/running_apps_chooser.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings_fixture.hpp"

namespace velotap {
namespace {

using test::english;
using Ids = std::vector<std::string>;

RunningInstance regular(std::string id, std::string name) {
  return {.bundleId = std::move(id), .name = std::move(name)};
}

TEST(RunningAppCandidates, AreRegularForeignAndWithoutARule) {
  RunningInstance agent = regular("agent", "Agent");
  agent.regular = false;
  const RunningAppCandidates candidates{
      {regular("z", "Zebra"), regular("own", "Velotap"), agent, regular("ruled", "Ruled"),
       regular("", "Nameless"), regular("a", "ant"), regular("z", "Zebra"), regular("org.x", "")}};
  Ids ids;
  Ids names;
  for (const AppEntry& entry : candidates.filter({"ruled"}, "own")) {
    ids.push_back(entry.bundleID);
    names.push_back(entry.name);
  }
  EXPECT_EQ(ids, (Ids{"a", "org.x", "z"}));
  EXPECT_EQ(names, (Ids{"ant", "org.x", "Zebra"}));
}

TEST(InstalledAppCandidates, AreForeignAndWithoutARuleUnderTheirNames) {
  const auto bundle = [](std::string id, std::string name, std::string location) {
    return ApplicationBundle{.bundleId = std::move(id),
                             .displayName = std::move(name),
                             .bundleName = {},
                             .location = std::move(location)};
  };
  const InstalledAppCandidates candidates{
      {bundle("z", "Zebra", "/a/z.desktop"), bundle("own", "Velotap", "/a/own.desktop"),
       bundle("ruled", "Ruled", "/a/ruled.desktop"), bundle("", "Nameless", "/a/x.desktop"),
       bundle("z", "Zebra", "/b/z.desktop"), bundle("org.file", "", "/a/Ant.desktop")}};
  const std::vector<AppEntry> entries = candidates.filter({"ruled"}, "own");
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].name, "Ant") << "after its file";
  EXPECT_EQ(entries[1].bundleID, "z");
  EXPECT_EQ(entries[1].url, "/a/z.desktop");
}

TEST(RunningAppsChooser, SaysWhatItOffers) {
  const RunningAppsView running = RunningAppsChooser({}).view(english());
  EXPECT_EQ(running.title, "Running Apps");
  EXPECT_EQ(running.message, "");
  EXPECT_EQ(running.searchPlaceholder, "Search running apps");
  EXPECT_EQ(running.empty, "No other apps to add");
  EXPECT_EQ(running.fileTitle, "");
  RunningAppsChooser sheet({}, AppsOffered::installed);
  EXPECT_EQ(sheet.offered(), AppsOffered::installed);
  const RunningAppsView installed = sheet.view(english());
  EXPECT_EQ(installed.title, "Applications");
  EXPECT_EQ(installed.message, "Choose one or more apps to add.");
  EXPECT_EQ(installed.searchPlaceholder, "Search apps");
  EXPECT_EQ(installed.fileTitle, "Choose a File…");
  EXPECT_EQ(installed.empty, "No other apps to add");
  sheet.refresh({{.bundleID = "org.x", .name = "X", .url = {}}});
  EXPECT_EQ(sheet.view(english()).empty, "");
  sheet.setQuery("zzz");
  EXPECT_EQ(sheet.view(english()).empty, "No apps match the search");
}

RunningAppsChooser chooser() {
  return RunningAppsChooser(RunningAppCandidates{
      {regular("a", "Ant"), regular("b", "Bee"),
       regular("c", "Beetle")}}.filter({}, "own"));
}

TEST(RunningAppsChooser, SelectsOneByOne) {
  RunningAppsChooser sheet = chooser();
  EXPECT_FALSE(sheet.view(english()).canAdd);
  EXPECT_EQ(sheet.view(english()).selectedText, "0 selected");
  sheet.toggle("c");
  sheet.toggle("a");
  EXPECT_EQ(sheet.selection(), (Ids{"a", "c"}));
  EXPECT_TRUE(sheet.view(english()).rows[0].selected);
  EXPECT_EQ(sheet.view(english()).selectedText, "2 selected");
  sheet.toggle("a");
  EXPECT_EQ(sheet.selection(), (Ids{"c"}));
  sheet.clearSelection();
  EXPECT_TRUE(sheet.selection().empty());
}

TEST(RunningAppsChooser, SelectsWhatTheSearchShows) {
  RunningAppsChooser sheet = chooser();
  sheet.setQuery(" BEE ");
  EXPECT_EQ(sheet.view(english()).rows.size(), 2U);
  EXPECT_TRUE(sheet.view(english()).canSelectVisible);
  sheet.selectVisible();
  EXPECT_FALSE(sheet.view(english()).canSelectVisible);
  sheet.setQuery("ant");
  EXPECT_EQ(sheet.selection(), (Ids{"b", "c"})) << "the search hides no selection";
  sheet.setQuery("zzz");
  EXPECT_EQ(sheet.view(english()).empty, "No other apps to add");
}

TEST(RunningAppsChooser, KeepsTheSelectionOfWhatStillRuns) {
  RunningAppsChooser sheet = chooser();
  sheet.toggle("a");
  sheet.toggle("b");
  sheet.refresh(RunningAppCandidates{{regular("b", "Bee"), regular("d", "Dog")}}.filter({}, ""));
  EXPECT_EQ(sheet.selection(), (Ids{"b"}));
  sheet.refresh(RunningAppCandidates{{regular("a", "Ant")}}.filter({}, ""));
  EXPECT_TRUE(sheet.selection().empty());
}

}  // namespace
}  // namespace velotap
