#include "config/settings_table.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(SettingsTable, everyKeyIsThereOnceAndExplained) {
  std::set<std::string_view> seen;
  for (const SettingRow& row : settingsTable()) {
    EXPECT_TRUE(seen.insert(row.key).second) << row.key << " comes twice";
    EXPECT_FALSE(row.meaning.empty()) << row.key;
    EXPECT_EQ(findSetting(row.key), &row);
  }
  EXPECT_EQ(findSetting("Enabled"), nullptr) << "keys are compared exactly";
  EXPECT_EQ(findSetting(""), nullptr);
}

TEST(SettingsTable, factorySettingsAreWhatUsersStartWith) {
  const ValueMap expected = {
      {"enabled", true},
      {"leftClickTogglesEnabled", true},
      {"hideStatusBarIcon", false},
      {"pinchSensitivity", 1.0},
      {"maxTapDurationMs", 300},
      {"maxTapDrift", 0.05},
      {"centerMinX", 0.35},
      {"centerMaxX", 0.65},
      {"ignoredApps", ValueArray()},
      {"keystrokeZoomApps", ValueArray()},
      {"mouseClick1Center", false},
      {"mouseClick2", false},
      {"mouseClick3", true},
      {"mouseTap3", true},
      {"padClick3", true},
      {"padTap3", true},
      {"padTap4", false},
      {"mousePinchZoom", true},
      {"mouseRotate", false},
      {"mouseSwipe3Nav", false},
  };
  EXPECT_EQ(factorySettings(), expected);
}

TEST(SettingsTable, otherSettingsAreNotRegistered) {
  const ValueMap factory = factorySettings();
  for (const char* key :
       {"accessibilitySetupPresented", "settings.gestureDevice", "settings.appRuleSort",
        "settings.appRuleDetails", "lowercaseIdentityMigrationCompleted", "padThreeFingerMode"}) {
    ASSERT_NE(findSetting(key), nullptr) << key;
    EXPECT_FALSE(factory.contains(key)) << key;
  }
  EXPECT_EQ(settingsTable().size(), factory.size() + 6);
}

TEST(SettingsTable, theSettingsWindowDeclaresThreeFactoryValues) {
  EXPECT_EQ(factoryValue(*findSetting("padThreeFingerMode")), Value("automatic"));
  EXPECT_EQ(factoryValue(*findSetting("settings.appRuleSort")), Value("name"));
  EXPECT_EQ(factoryValue(*findSetting("settings.appRuleDetails")), Value(true));
  EXPECT_FALSE(factoryValue(*findSetting("settings.gestureDevice")));
  EXPECT_FALSE(factoryValue(*findSetting("accessibilitySetupPresented")));
}

TEST(SettingsTable, factoryValuesHaveTheTypeOfTheirRow) {
  for (const SettingRow& row : settingsTable()) {
    const auto value = factoryValue(row);
    if (!value) continue;
    EXPECT_EQ(value->boolean() != nullptr, row.type == SettingType::boolean) << row.key;
    EXPECT_EQ(value->integer() != nullptr, row.type == SettingType::integer) << row.key;
    EXPECT_EQ(value->real() != nullptr, row.type == SettingType::real) << row.key;
    EXPECT_EQ(value->text() != nullptr, row.type == SettingType::text) << row.key;
    EXPECT_EQ(value->array() != nullptr, row.type == SettingType::texts) << row.key;
  }
}

TEST(SettingsTable, everyNumberHasARangeAroundItsFactoryValueAndNothingElseHas) {
  for (const SettingRow& row : settingsTable()) {
    const bool isNumber = row.type == SettingType::integer || row.type == SettingType::real;
    ASSERT_EQ(row.range.has_value(), isNumber) << row.key;
    if (!isNumber) continue;
    EXPECT_LT(row.range->lowest, row.factoryNumber) << row.key;
    EXPECT_LT(row.factoryNumber, row.range->highest) << row.key;
  }
}

TEST(SettingsTable, numbersAreBroughtIntoTheirRange) {
  for (const SettingRow& row : settingsTable()) {
    if (!row.range) continue;
    const auto [lowest, highest] = *row.range;
    EXPECT_EQ(inRange(row, lowest), lowest) << row.key;
    EXPECT_EQ(inRange(row, std::nextafter(lowest, -kInfinity)), lowest) << row.key;
    EXPECT_GT(inRange(row, std::nextafter(lowest, kInfinity)), lowest) << row.key;
    EXPECT_EQ(inRange(row, highest), highest) << row.key;
    EXPECT_LT(inRange(row, std::nextafter(highest, -kInfinity)), highest) << row.key;
    EXPECT_EQ(inRange(row, std::nextafter(highest, kInfinity)), highest) << row.key;
    for (const double junk : {kNaN, kInfinity, -kInfinity}) {
      EXPECT_EQ(inRange(row, junk), row.factoryNumber) << row.key;
    }
  }
}

TEST(SettingsTable, triggerRowsFollowTheEnumeration) {
  const std::string_view expected[] = {
      "mouseClick1Center", "mouseClick2", "mouseClick3",    "mouseTap3",   "padClick3",
      "padTap3",           "padTap4",     "mousePinchZoom", "mouseRotate", "mouseSwipe3Nav"};
  ASSERT_EQ(triggerTable().size(), std::size(expected));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_EQ(triggerTable()[i].key, expected[i]);
    EXPECT_EQ(triggerKey(static_cast<Trigger>(i)), expected[i]);
    EXPECT_EQ(triggerTable()[i].type, SettingType::boolean);
  }
  EXPECT_EQ(triggerKey(Trigger::padTap3), "padTap3");
}

TEST(SettingsKeys, theKeyOfAWarningNamesItsTrigger) {
  EXPECT_EQ(keys::conflictWarned("padTap3"), "conflictWarned.padTap3");
}

}  // namespace
}  // namespace velotap
