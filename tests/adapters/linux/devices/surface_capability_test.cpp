#include "adapters/linux/devices/surface_capability.hpp"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace velotap::test {
namespace {

// What sysfs shows of a Magic Mouse 2 and of a touch screen.
constexpr const char* kMouseAxes = "273800000000000";
constexpr const char* kNoProperties = "0";

TEST(SurfaceCapability, readsBitmapsFromTheirEnd) {
  EXPECT_TRUE(bitmapHas("1", 0));
  EXPECT_FALSE(bitmapHas("1", 1));
  EXPECT_TRUE(bitmapHas("8000000000000000", 63));
  EXPECT_TRUE(bitmapHas("2 0", 65));
  EXPECT_FALSE(bitmapHas("2 0", 1));
  EXPECT_FALSE(bitmapHas("2 0", 500));
}

TEST(SurfaceCapability, nonsenseHasNoBits) {
  for (const char* text : {"", " ", "xyz", "0x1", "1ffffffffffffffff"}) {
    EXPECT_FALSE(bitmapHas(text, 0)) << text;
  }
}

TEST(SurfaceCapability, aMouseWithASurfaceIsOne) {
  ASSERT_TRUE(bitmapHas(kMouseAxes, ABS_MT_POSITION_X));
  EXPECT_TRUE(isMultitouchSurface({kMouseAxes, kNoProperties, "a0:b1:c2:d3:e4:f5"}));
}

TEST(SurfaceCapability, touchScreensAreNot) {
  EXPECT_FALSE(isMultitouchSurface({kMouseAxes, "2", "usb-0000:00:14.0-1/input0"}));
}

TEST(SurfaceCapability, plainMiceAndKeyboardsAreNot) {
  EXPECT_FALSE(isMultitouchSurface({"0", kNoProperties, "usb-0000:00:14.0-1/input0"}));
  EXPECT_FALSE(isMultitouchSurface({"3", kNoProperties, "isa0060/serio0/input0"}));
}

TEST(SurfaceCapability, ourOwnDevicesAreNeverReadBack) {
  EXPECT_FALSE(isMultitouchSurface({kMouseAxes, kNoProperties, "velotap/gesture"}));
  EXPECT_TRUE(isMultitouchSurface({kMouseAxes, kNoProperties, "other/velotap/gesture"}));
}

}  // namespace
}  // namespace velotap::test
