#include "settings/preferences_tabs.hpp"

#include <gtest/gtest.h>

#include <string>

#include "settings_fixture.hpp"

namespace velotap {
namespace {

TEST(PreferencesTabs, StandInTheOrderOfTheirNumbers) {
  int number = 0;
  std::string told;
  for (const PreferencesTabRow& row : preferencesTabs()) {
    EXPECT_EQ(static_cast<int>(row.tab), number++);
    EXPECT_EQ(preferencesTabLabel(row.tab), row.label);
    told += std::string(row.label) + " " + std::string(row.symbol) + "\n";
  }
  EXPECT_EQ(told,
            "General gearshape\n"
            "Gestures hand.tap\n"
            "Tuning slider.horizontal.3\n"
            "Apps app.badge.checkmark\n"
            "About info.circle\n");
}

TEST(PreferencesTabs, TheWindowHasItsSizesAndTheNameOfItsFrame) {
  EXPECT_EQ(PreferencesWindowSize::kWidth, 560);
  EXPECT_EQ(PreferencesWindowSize::kHeight, 600);
  EXPECT_EQ(PreferencesWindowSize::kLeastWidth, 480);
  EXPECT_EQ(PreferencesWindowSize::kLeastHeight, 420);
  EXPECT_EQ(kPreferencesFrameName, "VelotapSettings");
}

TEST(PreferencesTabs, ShowingBuildsAClosedWindowInTheMiddle) {
  const auto steps = showPreferences(PreferencesTab::apps, {});
  EXPECT_TRUE(steps.build);
  EXPECT_TRUE(steps.centre);
  EXPECT_FALSE(steps.restoreFromDock);
  EXPECT_EQ(steps.select, PreferencesTab::apps);
}

TEST(PreferencesTabs, ShowingSwitchesAVisibleWindow) {
  const auto steps = showPreferences(PreferencesTab::tuning, {.exists = true, .visible = true});
  EXPECT_FALSE(steps.build);
  EXPECT_FALSE(steps.centre);
  EXPECT_FALSE(steps.restoreFromDock);
  EXPECT_EQ(steps.select, PreferencesTab::tuning);
}

TEST(PreferencesTabs, ShowingRestoresAMiniaturisedWindow) {
  const auto steps = showPreferences(PreferencesTab::general,
                                     {.exists = true, .miniaturised = true, .visible = false});
  EXPECT_FALSE(steps.build);
  EXPECT_TRUE(steps.restoreFromDock);
  EXPECT_FALSE(steps.centre);
}

TEST(PreferencesTabs, ShowingCentresAWindowThatIsHidden) {
  const auto steps = showPreferences(PreferencesTab::general, {.exists = true});
  EXPECT_FALSE(steps.build);
  EXPECT_TRUE(steps.centre);
}

TEST(PreferencesTabs, AfterACloseNothingOfTheOldWindowCounts) {
  const auto steps = showPreferences(PreferencesTab::general,
                                     {.exists = false, .miniaturised = true, .visible = true});
  EXPECT_TRUE(steps.build);
  EXPECT_FALSE(steps.restoreFromDock);
  EXPECT_TRUE(steps.centre);
}

}  // namespace
}  // namespace velotap
