#include "config/settings_table.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace velotap {
namespace {

TEST(SettingsTable, keysAreUnique) {
  std::set<std::string_view> keys;
  for (const SettingRow& row : settingsTable()) EXPECT_TRUE(keys.insert(row.key).second) << row.key;
}

TEST(SettingsTable, twentyFactoryValuesAreRegistered) {
  const ValueMap factory = factorySettings();
  EXPECT_EQ(factory.size(), 20U);
  EXPECT_EQ(factory.at("maxTapDurationMs"), Value(300));
  EXPECT_EQ(factory.at("maxTapDrift"), Value(0.05));
  EXPECT_EQ(factory.at("hideStatusBarIcon"), Value(false));
  EXPECT_EQ(factory.at("leftClickTogglesEnabled"), Value(true));
  EXPECT_EQ(factory.at("ignoredApps"), Value(ValueArray()));
  EXPECT_FALSE(factory.contains("accessibilitySetupPresented"));
}

TEST(SettingsTable, triggersAreInTheOrderOfTheirEnumeration) {
  EXPECT_EQ(triggerKey(Trigger::mouseClick1Center), "mouseClick1Center");
  EXPECT_EQ(triggerKey(Trigger::padTap3), "padTap3");
  EXPECT_EQ(triggerKey(Trigger::mouseSwipe3Nav), "mouseSwipe3Nav");
}

TEST(SettingsTable, factoryNumbersLieInTheirRange) {
  for (const SettingRow& row : settingsTable()) {
    EXPECT_GE(row.factory, row.lowest.value_or(row.factory)) << row.key;
    EXPECT_LE(row.factory, row.highest.value_or(row.factory)) << row.key;
  }
}

TEST(SettingsTable, everySettingIsDocumentedWithItsMeaning) {
  std::ifstream file(VELOTAP_SOURCE_DIR "/docs/settings.md");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  for (const SettingRow& row : settingsTable()) {
    const std::size_t key = text.find("| `" + std::string(row.key) + "` |");
    ASSERT_NE(key, std::string::npos) << row.key;
    const std::string line = text.substr(key, text.find('\n', key) - key);
    EXPECT_NE(line.find(row.meaning), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace velotap
