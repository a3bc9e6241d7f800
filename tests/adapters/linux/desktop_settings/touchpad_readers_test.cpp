#include "adapters/linux/desktop_settings/touchpad_readers.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace velotap {
namespace {

const std::string kData = VELOTAP_DCONF_DATA;
constexpr const char* kSchema = "org.gnome.desktop.peripherals.touchpad";

DconfSnapshot snapshot(std::vector<std::string> databases, std::vector<std::string> desktops = {}) {
  for (auto& database : databases) database.insert(0, kData + "/");
  return DconfSnapshot::load({.databases = databases,
                              .schemas = {kData + "/gschemas.compiled"},
                              .desktops = std::move(desktops)});
}

TEST(GnomeTouchpads, hasOneSettingForAll) {
  const DesktopTouchpads touchpads = gnomeTouchpads(snapshot({"user"}), kSchema);
  EXPECT_TRUE(touchpads.others.tapToClick);
  EXPECT_EQ(touchpads.others.clickMethod, TouchpadClickMethod::buttonAreas);
  EXPECT_TRUE(touchpads.others.enabled);
  EXPECT_FALSE(touchpads.others.disabledWithMouse);
  EXPECT_TRUE(touchpads.devices.empty());
}

TEST(GnomeTouchpads, hasTheSchemasDefaults) {
  const DesktopTouchpads touchpads = gnomeTouchpads(snapshot({}), kSchema);
  EXPECT_EQ(touchpads.others, TouchpadSettings{});
}

TEST(GnomeTouchpads, hasTheDesktopsOwnDefaults) {
  const DesktopTouchpads touchpads = gnomeTouchpads(snapshot({}, {"ubuntu", "GNOME"}), kSchema);
  EXPECT_TRUE(touchpads.others.tapToClick);
  EXPECT_EQ(touchpads.others.clickMethod, TouchpadClickMethod::fingers) << "by the library";
}

TEST(GnomeTouchpads, canBeOff) {
  const DesktopTouchpads touchpads = gnomeTouchpads(snapshot({"site"}), kSchema);
  EXPECT_FALSE(touchpads.others.enabled);
  EXPECT_EQ(touchpads.others.clickMethod, TouchpadClickMethod::none);
}

TEST(GnomeTouchpads, withoutTheSchemaTheLibrarysDefaultsHold) {
  EXPECT_EQ(gnomeTouchpads(snapshot({"user"}), "org.cinnamon.desktop.peripherals.touchpad"),
            DesktopTouchpads{});
}

DesktopTouchpads kde(const char* text, bool tapByDefault = false) {
  KdeConfig config;
  config.add(text);
  return kdeTouchpads(config, tapByDefault);
}

TEST(KdeTouchpads, eachHasSettingsOfItsOwn) {
  const DesktopTouchpads touchpads =
      kde("[Libinput][76][613][Magic Trackpad]\nTapToClick=true\nClickMethod=1\n"
          "DisableEventsOnExternalMouse=true\n"
          "[Libinput][1739][52619][Laptop]\nEnabled=false\nClickMethod=2\n");
  ASSERT_EQ(touchpads.devices.size(), 2U);
  const TouchpadSettings& trackpad = touchpads.of(76, 613);
  EXPECT_TRUE(trackpad.tapToClick && trackpad.enabled && trackpad.disabledWithMouse);
  EXPECT_EQ(trackpad.clickMethod, TouchpadClickMethod::buttonAreas);
  const TouchpadSettings& laptop = touchpads.of(1739, 52619);
  EXPECT_FALSE(laptop.tapToClick || laptop.enabled || laptop.disabledWithMouse);
  EXPECT_EQ(laptop.clickMethod, TouchpadClickMethod::fingers);
  EXPECT_EQ(touchpads.named("Laptop"), laptop);
}

TEST(KdeTouchpads, clickMethodsAreNumbers) {
  EXPECT_EQ(kde("[Libinput][1][2][a]\nClickMethod=0\n").of(1, 2).clickMethod,
            TouchpadClickMethod::none);
  for (const char* other : {"3", "", "fingers", "-1"}) {
    EXPECT_EQ(kde(("[Libinput][1][2][a]\nClickMethod=" + std::string(other)).c_str())
                  .of(1, 2)
                  .clickMethod,
              TouchpadClickMethod::fingers)
        << other;
  }
}

TEST(KdeTouchpads, theDefaultOfTapsDependsOnTheVersion) {
  const char* text = "[Libinput][76][613][a]\nTapToClick=false\n[Libinput][76][804][b]\nx=1\n";
  EXPECT_TRUE(kde(text, true).others.tapToClick);
  EXPECT_FALSE(kde(text, true).of(76, 613).tapToClick);
  EXPECT_TRUE(kde(text, true).of(76, 804).tapToClick);
  EXPECT_FALSE(kde(text, false).others.tapToClick);
}

TEST(KdeTouchpads, groupsOfAnotherFormAreNoDevices) {
  EXPECT_TRUE(kde("[Libinput]\nTapToClick=true\n[Libinput][Defaults][Touchpad]\nTapToClick=true\n"
                  "[Libinput][x][613][a]\nTapToClick=true\n[Libinput][76][][a]\nTapToClick=true\n"
                  "[Mouse][76][613][a]\nTapToClick=true\n")
                  .devices.empty());
}

}  // namespace
}  // namespace velotap
