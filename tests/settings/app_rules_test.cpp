#include "settings/app_rules.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velotap {
namespace {

using Ids = std::vector<std::string>;

AppEntry installed(const std::string& id, const std::string& name) {
  return {.bundleID = id, .name = name, .url = "/Applications/" + name + ".app"};
}
AppEntry missing(const std::string& id) {
  return {.bundleID = id, .name = id, .url = {}};
}

Ids ids(const AppRuleFilter& filter, const std::vector<AppEntry>& entries) {
  Ids result;
  for (const AppEntry& entry : filter.matching(entries)) result.push_back(entry.bundleID);
  return result;
}

ApplicationBundle bundle(std::string display, std::string name, std::string location) {
  return {.bundleId = "a.b",
          .displayName = std::move(display),
          .bundleName = std::move(name),
          .location = std::move(location)};
}

TEST(AppEntry, IsNamedByTheFirstNameThereIs) {
  EXPECT_EQ(appEntry("a.b", bundle("Shown", "Name", "/A/File.app")).name, "Shown");
  EXPECT_EQ(appEntry("a.b", bundle("", "Name", "/A/File.app")).name, "Name");
  EXPECT_EQ(appEntry("a.b", bundle("", "", "/A/File.app")).name, "File");
  EXPECT_EQ(appEntry("a.b", bundle("", "", "/A/File.app/")).name, "File");
  EXPECT_EQ(appEntry("a.b", bundle("", "", "/usr/share/org.x.desktop")).name, "org.x");
  EXPECT_EQ(appEntry("a.b", bundle("", "", "/A/.app")).name, ".app");
  EXPECT_EQ(appEntry("a.b", bundle("", "", "/A/plain")).name, "plain");
  EXPECT_EQ(appEntry("a.b", bundle("", "", "")).name, "a.b");
  EXPECT_EQ(appEntry("a.b", std::nullopt).name, "a.b");
}

TEST(AppEntry, IsInstalledWhenItIsSomewhere) {
  EXPECT_TRUE(appEntry("a.b", bundle("", "", "/A/File.app")).isInstalled());
  EXPECT_FALSE(appEntry("a.b", std::nullopt).isInstalled());
}

TEST(AppRuleFilter, FindsNamesAndIdentifiersOfMissingApps) {
  const std::vector<AppEntry> entries = {installed("org.editor", "Éditeur"),
                                         missing("com.valvesoftware.steam")};
  AppRuleFilter filter;
  filter.query = "STEAM";
  EXPECT_EQ(ids(filter, entries), (Ids{"com.valvesoftware.steam"}));
  filter.query = "editeur";
  EXPECT_EQ(ids(filter, entries), (Ids{"org.editor"}));
  filter.query = "nothing";
  EXPECT_TRUE(ids(filter, entries).empty());
}

TEST(AppRuleFilter, TellsInstalledFromMissing) {
  const std::vector<AppEntry> entries = {installed("a", "A"), missing("b")};
  AppRuleFilter filter;
  filter.availability = "installed";
  EXPECT_EQ(ids(filter, entries), (Ids{"a"}));
  filter.availability = "missing";
  EXPECT_EQ(ids(filter, entries), (Ids{"b"}));
  filter.availability = "whatever";
  EXPECT_EQ(ids(filter, entries), (Ids{"b"}));
}

TEST(AppRuleFilter, ShowsOverriddenRulesOnly) {
  AppRuleFilter filter;
  filter.overriddenIDs = {"b"};
  EXPECT_EQ(ids(filter, {missing("a"), missing("b")}), (Ids{"a", "b"}));
  filter.overriddenOnly = true;
  EXPECT_EQ(ids(filter, {missing("a"), missing("b")}), (Ids{"b"}));
}

TEST(AppRuleFilter, SortsByNameWithNumbersByValue) {
  const std::vector<AppEntry> entries = {installed("x", "App 10"), installed("y", "app 9"),
                                         installed("w", "Zebra"), installed("z", "äpfel")};
  EXPECT_EQ(ids({}, entries), (Ids{"z", "y", "x", "w"}));
}

TEST(AppRuleFilter, SortsAppsOfOneNameByIdentifier) {
  EXPECT_EQ(ids({}, {installed("b", "Same"), installed("a", "same"), installed("C", "Same")}),
            (Ids{"C", "a", "b"}));
}

TEST(AppRuleFilter, SortsByIdentifier) {
  AppRuleFilter filter;
  filter.sort = "identifier";
  EXPECT_EQ(ids(filter, {installed("org.b10", "A"), installed("org.b9", "B")}),
            (Ids{"org.b9", "org.b10"}));
}

TEST(AppRuleFilter, CountsWhatIsAwayFromItsStart) {
  AppRuleFilter filter;
  EXPECT_EQ(filter.activeCount(), 0);
  EXPECT_FALSE(filter.hidesAnything());
  filter.query = "x";
  filter.sort = "identifier";
  EXPECT_EQ(filter.activeCount(), 0);
  EXPECT_TRUE(filter.hidesAnything());
  filter.ruleType = "zoom";
  filter.availability = "missing";
  filter.overriddenOnly = true;
  EXPECT_EQ(filter.activeCount(), 3);
  EXPECT_FALSE(filter.showsIgnored());
  EXPECT_TRUE(filter.showsZoom());
}

TEST(CompatibilityApps, StandInTheirOrder) {
  const auto apps = compatibilityApps();
  EXPECT_EQ(
      Ids(apps.begin(), apps.end()),
      (Ids{"com.parallels.desktop.console", "com.vmware.fusion", "com.utmapp.UTM",
           "com.microsoft.rdc.macos", "com.teamviewer.TeamViewer", "com.valvesoftware.steam"}));
  const auto ofLinux = compatibilityAppsOfLinux();
  EXPECT_GT(ofLinux.size(), apps.size());
  EXPECT_EQ(Ids(ofLinux.begin(), ofLinux.begin() + 6), Ids(apps.begin(), apps.end()));
  EXPECT_EQ(std::set<std::string_view>(ofLinux.begin(), ofLinux.end()).size(), ofLinux.size());
}

}  // namespace
}  // namespace velotap
