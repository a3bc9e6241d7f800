#include "settings/app_lists_model.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake_applications.hpp"
#include "settings_fixture.hpp"

namespace velotap {
namespace {

using Ids = std::vector<std::string>;

Ids ids(const std::vector<AppEntry>& entries) {
  Ids result;
  for (const AppEntry& entry : entries) result.push_back(entry.bundleID);
  return result;
}

class AppListsModelTest : public ::testing::Test {
 protected:
  test::StoredSettings settings;
  test::FakeApplications applications;
  AppListsModel model{settings.config, applications};
};

TEST_F(AppListsModelTest, AddsAtTheEndAndOnce) {
  model.addIgnored("z");
  model.addIgnored("a");
  model.addIgnored("z");
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"z", "a"}));
  EXPECT_EQ(ids(model.ignored()), (Ids{"a", "z"}));
  EXPECT_TRUE(model.keystrokeZoom().empty());
}

TEST_F(AppListsModelTest, RemovesEveryOccurrence) {
  settings.defaults.set("ignoredApps", Value::strings({"a", "b", "a"}));
  model.removeIgnored("a");
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"b"}));
  settings.config.setKeystrokeZoomApps({"b", "c"});
  model.removeKeystrokeZoom("b");
  EXPECT_EQ(settings.config.keystrokeZoomApps(), (Ids{"c"}));
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"b"}));
}

TEST_F(AppListsModelTest, SuggestsWhatIsNotIgnoredYet) {
  EXPECT_EQ(model.suggestions().size(), 6U);
  model.addIgnored("com.vmware.fusion");
  EXPECT_EQ(model.suggestions(),
            (Ids{"com.parallels.desktop.console", "com.utmapp.UTM", "com.microsoft.rdc.macos",
                 "com.teamviewer.TeamViewer", "com.valvesoftware.steam"}));
  model.addKeystrokeZoom("com.utmapp.UTM");
  EXPECT_EQ(model.suggestions().size(), 5U);
}

TEST_F(AppListsModelTest, SeesOtherWritersOnReload) {
  settings.config.setIgnoredApps({"other"});
  EXPECT_TRUE(model.ignored().empty());
  model.reload();
  EXPECT_EQ(ids(model.ignored()), (Ids{"other"}));
}

TEST_F(AppListsModelTest, SortsAsTheSettingSays) {
  applications.install("a", "Zebra");
  applications.install("b", "Ant");
  settings.config.setIgnoredApps({"a", "b"});
  model.reload();
  EXPECT_EQ(ids(model.ignored()), (Ids{"b", "a"}));
  settings.defaults.set("settings.appRuleSort", "identifier");
  model.reload();
  EXPECT_EQ(ids(model.ignored()), (Ids{"a", "b"}));
}

TEST_F(AppListsModelTest, KnowsTheRulesThatAreOverridden) {
  settings.config.setIgnoredApps({"a", "b"});
  settings.config.setKeystrokeZoomApps({"b", "c"});
  model.reload();
  EXPECT_EQ(model.overriddenIDs(), (std::set<std::string, std::less<>>{"b"}));
}

TEST_F(AppListsModelTest, RestoresBothListsInTheirOrder) {
  settings.config.setIgnoredApps({"c", "a", "b"});
  settings.config.setKeystrokeZoomApps({"z"});
  const AppRuleSnapshot snapshot = model.snapshot();
  model.removeIgnored("a");
  model.addKeystrokeZoom("y");
  model.restore(snapshot);
  EXPECT_EQ(settings.config.ignoredApps(), (Ids{"c", "a", "b"}));
  EXPECT_EQ(settings.config.keystrokeZoomApps(), (Ids{"z"}));
}

}  // namespace
}  // namespace velotap
