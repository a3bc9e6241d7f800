#include "input/device_class.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace velotap {
namespace {

TEST(DeviceClass, ThreeFamiliesAreMagicMice) {
  for (const std::int32_t family : {84, 112, 113}) {
    EXPECT_EQ(classifyDevice(family), DeviceClass::magicMouse) << family;
  }
}

TEST(DeviceClass, EveryOtherFamilyIsATrackpad) {
  for (const std::int32_t family :
       {-1, 0, 83, 85, 111, 114, 128, 129, std::numeric_limits<std::int32_t>::max(),
        std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(classifyDevice(family), DeviceClass::trackpad) << family;
  }
}

TEST(DeviceClass, MiceComeFirst) {
  ASSERT_EQ(kAllDeviceClasses.size(), 2U);
  EXPECT_EQ(deviceClassName(kAllDeviceClasses[0]), "magicMouse");
  EXPECT_EQ(deviceClassName(kAllDeviceClasses[1]), "trackpad");
}

}  // namespace
}  // namespace velotap
