#include "settings/gesture_explanation.hpp"

#include <gtest/gtest.h>

#include "config/settings_table.hpp"
#include "settings_fixture.hpp"

namespace velotap {
namespace {

std::string title(std::string_view key) {
  return GestureExplanation(key, test::english()).title;
}

TEST(GestureExplanation, NamesEachTrigger) {
  EXPECT_EQ(title("mouseClick1Center"), "Click with one finger in center");
  EXPECT_EQ(title("mouseClick2"), "Click with two fingers");
  EXPECT_EQ(title("mouseClick3"), "Click with three fingers");
  EXPECT_EQ(title("padClick3"), "Click with three fingers");
  EXPECT_EQ(title("padTap4"), "Tap with four fingers");
  EXPECT_EQ(title("mousePinchZoom"), "Pinch to zoom");
  EXPECT_EQ(title("mouseRotate"), "Rotate with two fingers");
  EXPECT_EQ(title("mouseSwipe3Nav"), "Three-finger swipe → Back/Forward");
  EXPECT_EQ(title("mouseTap3"), "Tap with three fingers");
  EXPECT_EQ(title("padTap3"), "Tap with three fingers");
  EXPECT_EQ(title("unknown"), "Tap with three fingers");
}

TEST(GestureExplanation, SortsTriggersIntoSectionsAndDevices) {
  for (const SettingRow& row : triggerTable()) {
    const bool more =
        row.key == "mousePinchZoom" || row.key == "mouseRotate" || row.key == "mouseSwipe3Nav";
    EXPECT_EQ(GestureExplanation(row.key, test::english()).category,
              more ? GestureCategory::more : GestureCategory::middleClick)
        << row.key;
    EXPECT_EQ(gestureDeviceOfKey(row.key) == GestureDevice::trackpad, row.key[0] == 'p') << row.key;
  }
}

TEST(GestureExplanation, ExplainsInASentenceOfTheLanguage) {
  for (const std::string& language : Localization::shared().languages()) {
    for (const SettingRow& row : triggerTable()) {
      const GestureExplanation explanation(row.key, test::textsIn(language));
      EXPECT_NE(explanation.detail.find(' '), std::string::npos) << language << row.key;
    }
  }
}

}  // namespace
}  // namespace velotap
