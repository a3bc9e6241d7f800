#include "adapters/linux/desktop_settings/kde_config.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

using Group = KdeConfig::Group;

std::string value(const KdeConfig& config, const Group& group, const char* key) {
  const auto found = config.groups().find(group);
  if (found == config.groups().end()) return "(no group)";
  const auto entry = found->second.find(key);
  return entry == found->second.end() ? "(no key)" : entry->second;
}

TEST(KdeConfig, readsNestedGroups) {
  KdeConfig config;
  config.add(
      "[Libinput][1452][613][Apple Inc. Magic Trackpad]\nTapToClick=true\n\n"
      "[Mouse]\ncursorTheme=breeze\n");
  EXPECT_EQ(value(config, {"Libinput", "1452", "613", "Apple Inc. Magic Trackpad"}, "TapToClick"),
            "true");
  EXPECT_EQ(value(config, {"Mouse"}, "cursorTheme"), "breeze");
}

TEST(KdeConfig, entriesBeforeAnyGroupBelongToNone) {
  KdeConfig config;
  config.add("a=1\n");
  EXPECT_EQ(value(config, {}, "a"), "1");
}

TEST(KdeConfig, blanksCommentsAndLineEndsAreSkipped) {
  KdeConfig config;
  config.add("  # x=1\r\n[ a ]\r\n  key =  some value \t\r\nno equal sign\n=nameless\n");
  EXPECT_EQ(value(config, {" a "}, "key"), "some value");
  EXPECT_EQ(config.groups().at({" a "}).size(), 1U);
}

TEST(KdeConfig, escapesAreUndone) {
  KdeConfig config;
  config.add("[a\\x5bb\\x5d]\nk=\\sone\\ttwo\\n\\\\x41\\x41\\q\\x4\n");
  EXPECT_EQ(value(config, {"a[b]"}, "k"), " one\ttwo\n\\x41A\\q\\x4");
}

TEST(KdeConfig, laterFilesLieOverEarlierOnes) {
  KdeConfig config;
  config.add("[g]\na=1\nb=1\n");
  config.add("[g]\na=2\n");
  EXPECT_EQ(value(config, {"g"}, "a"), "2");
  EXPECT_EQ(value(config, {"g"}, "b"), "1");
}

TEST(KdeConfig, whatTheSystemSealsStaysAsItIs) {
  KdeConfig config;
  config.add("[g]\na[$i]=1\nb=1\n[whole][$i]\nc=1\nd=1\n");
  config.add("[g]\na=2\nb=2\n[whole]\nc=2\n");
  EXPECT_EQ(value(config, {"g"}, "a"), "1");
  EXPECT_EQ(value(config, {"g"}, "b"), "2");
  EXPECT_EQ(value(config, {"whole"}, "c"), "1");
  EXPECT_EQ(value(config, {"whole"}, "d"), "1");
}

TEST(KdeConfig, translationsAreLeftOut) {
  KdeConfig config;
  config.add("[g]\nName[de]=Maus\nName=Mouse\n");
  EXPECT_EQ(value(config, {"g"}, "Name"), "Mouse");
  EXPECT_EQ(config.groups().at({"g"}).size(), 1U);
}

TEST(KdeConfig, aGroupLineThatCannotBeReadTakesItsEntriesWithIt) {
  KdeConfig config;
  config.add("[good]\na=1\n[broken\na=2\n[also]broken\na=3\n");
  EXPECT_EQ(value(config, {"good"}, "a"), "1");
}

TEST(KdeConfig, anEmptyTextHasNoGroups) {
  KdeConfig config;
  config.add("");
  EXPECT_TRUE(config.groups().empty());
}

TEST(KdeConfig, booleansAndNumbersAreReadAsKdeDoes) {
  for (const char* on : {"true", "on", "yes", "1"}) EXPECT_EQ(kdeBoolean(on), true);
  for (const char* off : {"false", "off", "no", "0"}) EXPECT_EQ(kdeBoolean(off), false);
  for (const char* other : {"", "2", "maybe"}) EXPECT_EQ(kdeBoolean(other), std::nullopt);
  EXPECT_EQ(kdeInteger("-12"), -12);
  for (const char* other : {"", "1x", "x", "99999999999"}) EXPECT_FALSE(kdeInteger(other));
}

}  // namespace
}  // namespace velotap
