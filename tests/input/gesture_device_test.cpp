#include "input/gesture_device.hpp"

#include <gtest/gtest.h>

#include "adapters/simulated/simulated_log.hpp"
#include "adapters/simulated/simulated_preferences.hpp"

namespace velotap {
namespace {

class GestureDeviceSelectionTest : public testing::Test {
 protected:
  std::optional<std::string> stored() { return defaults_.text("settings.gestureDevice"); }
  void store(const char* text) { defaults_.set("settings.gestureDevice", text); }
  GestureDevice restored(std::initializer_list<DeviceClass> connected) {
    GestureDeviceSelection selection(defaults_);
    selection.restore(std::vector<DeviceClass>(connected));
    return selection.device();
  }

  SimulatedPreferences preferences_;
  SimulatedLog log_;
  DefaultsStore defaults_{preferences_, log_};
};

TEST_F(GestureDeviceSelectionTest, anythingButTrackpadIsTheMouse) {
  EXPECT_EQ(GestureDeviceSelection(defaults_).device(), GestureDevice::mouse);
  for (const char* text : {"mouse", "Trackpad", "trackpad ", ""}) {
    store(text);
    EXPECT_EQ(GestureDeviceSelection(defaults_).device(), GestureDevice::mouse) << text;
  }
  store("trackpad");
  EXPECT_EQ(GestureDeviceSelection(defaults_).device(), GestureDevice::trackpad);
  defaults_.set("settings.gestureDevice", 1);
  EXPECT_EQ(GestureDeviceSelection(defaults_).device(), GestureDevice::mouse);
}

TEST_F(GestureDeviceSelectionTest, creatingItWritesNothing) {
  const GestureDeviceSelection selection(defaults_);
  EXPECT_FALSE(stored());
}

TEST_F(GestureDeviceSelectionTest, settingPublishesAndRemembers) {
  GestureDeviceSelection selection(defaults_);
  std::vector<GestureDevice> published;
  const auto observation =
      selection.observe([&](GestureDevice device) { published.push_back(device); });
  selection.setDevice(GestureDevice::trackpad);
  EXPECT_EQ(published, (std::vector{GestureDevice::trackpad}));
  EXPECT_EQ(stored(), "trackpad");
}

TEST_F(GestureDeviceSelectionTest, theFirstTimeTheConnectedDeviceDecides) {
  EXPECT_EQ(restored({DeviceClass::magicMouse, DeviceClass::trackpad}), GestureDevice::mouse);
  EXPECT_EQ(stored(), "mouse");
  defaults_.remove("settings.gestureDevice");
  EXPECT_EQ(restored({DeviceClass::trackpad}), GestureDevice::trackpad);
  EXPECT_EQ(stored(), "trackpad");
  defaults_.remove("settings.gestureDevice");
  EXPECT_EQ(restored({}), GestureDevice::mouse);
  EXPECT_EQ(stored(), "mouse");
}

TEST_F(GestureDeviceSelectionTest, anEarlierChoiceWins) {
  store("mouse");
  EXPECT_EQ(restored({DeviceClass::trackpad}), GestureDevice::mouse);
  store("trackpad");
  EXPECT_EQ(restored({DeviceClass::magicMouse}), GestureDevice::trackpad);
  store("Trackpad");
  EXPECT_EQ(restored({DeviceClass::trackpad}), GestureDevice::trackpad) << "that was no choice";
}

TEST(GestureDevice, titlesAreKeysOfTheTables) {
  EXPECT_EQ(gestureDeviceTitleKey(GestureDevice::mouse), "Magic Mouse");
  EXPECT_EQ(gestureDeviceTitleKey(GestureDevice::trackpad), "Trackpad");
}

}  // namespace
}  // namespace velotap
