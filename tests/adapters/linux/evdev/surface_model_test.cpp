#include "adapters/linux/evdev/surface_model.hpp"

#include <gtest/gtest.h>

#include "event_maker.hpp"

namespace velotap::test {
namespace {

TEST(SurfaceModel, knowsAppleDevicesByVendorAndProduct) {
  struct Row {
    std::uint16_t vendor, product;
    std::int32_t family;
  };
  for (const Row& row :
       {Row{0x05AC, 0x030D, 112}, Row{0x004C, 0x0269, 112}, Row{0x05AC, 0x0269, 112},
        Row{0x004C, 0x0323, 112}, Row{0x05AC, 0x0323, 112}, Row{0x05AC, 0x030E, 128},
        Row{0x004C, 0x0265, 129}, Row{0x05AC, 0x0265, 129}, Row{0x004C, 0x0324, 130},
        Row{0x05AC, 0x0324, 130}, Row{0x06CB, 0x0001, 136}}) {
    EvdevDevice device = magicTrackpad();
    device.vendor = row.vendor;
    device.product = row.product;
    EXPECT_EQ(surfaceModel(device).familyId, row.family) << std::hex << row.product;
  }
}

TEST(SurfaceModel, anUnknownMouseWithASurfaceIsAMagicMouse) {
  EvdevDevice device = magicMouse();
  device.vendor = 0x1234;
  EXPECT_EQ(surfaceModel(device).familyId, 112);
}

TEST(SurfaceModel, busesInsideTheCaseAreBuiltIn) {
  EvdevDevice device = magicTrackpad();
  EXPECT_FALSE(surfaceModel(device).builtIn);
  for (const int bus : {BUS_I2C, BUS_I8042, BUS_RMI, BUS_SPI}) {
    device.bus = static_cast<std::uint16_t>(bus);
    EXPECT_TRUE(surfaceModel(device).builtIn) << bus;
  }
  device.bus = BUS_USB;
  EXPECT_FALSE(surfaceModel(device).builtIn) << "a wired Magic Trackpad";
  device.vendor = 0x05AC;
  device.product = 0x0259;
  EXPECT_TRUE(surfaceModel(device).builtIn) << "a notebook's own";
}

TEST(SurfaceModel, yGrowsUpwards) {
  const SurfaceModel model = surfaceModel(magicTrackpad());
  EXPECT_EQ(model.normalised(-3678, -2478), (MTPoint{0, 1}));
  EXPECT_EQ(model.normalised(3934, 2587), (MTPoint{1, 0}));
  EXPECT_NEAR(model.widthMm(), 162, 0.1);
  EXPECT_NEAR(model.heightMm(), 115.1, 0.1);
  EXPECT_NEAR(static_cast<double>(model.millimetres(-3678 + 47, 2587 - 44).x), 1, 1e-5);
  EXPECT_NEAR(static_cast<double>(model.millimetres(-3678 + 47, 2587 - 44).y), 1, 1e-5);
}

TEST(SurfaceModel, theMagicMouseIsTallerThanWide) {
  const SurfaceModel model = surfaceModel(magicMouse());
  EXPECT_NEAR(model.widthMm(), 51.5, 0.1);
  EXPECT_NEAR(model.heightMm(), 90.7, 0.1);
}

TEST(SurfaceModel, nonsenseRangesDivideNothingByZero) {
  EvdevDevice device = magicTrackpad();
  device.absoluteAxes[ABS_MT_POSITION_X] = AxisInfo{.minimum = 5, .maximum = 5};
  device.absoluteAxes[ABS_MT_POSITION_Y] = AxisInfo{.minimum = INT32_MAX, .maximum = INT32_MIN};
  device.absoluteAxes[ABS_MT_SLOT] = AxisInfo{.minimum = 0, .maximum = INT32_MAX};
  const SurfaceModel model = surfaceModel(device);
  EXPECT_GT(model.width, 0);
  EXPECT_GT(model.height, 0);
  EXPECT_GT(model.unitsPerMmX, 0);
  EXPECT_EQ(model.slots, 64);
}

TEST(SurfaceModel, aSurfaceWithoutResolutionGetsAPlausibleSize) {
  EvdevDevice device = magicTrackpad();
  device.vendor = 0x1234;
  device.absoluteAxes[ABS_MT_POSITION_X]->resolution = 0;
  device.absoluteAxes[ABS_MT_POSITION_Y]->resolution = 0;
  EXPECT_NEAR(surfaceModel(device).widthMm(), 100, 0.1);
  EXPECT_NEAR(surfaceModel(device).heightMm(), 60, 0.1);
}

}  // namespace
}  // namespace velotap::test
