#include "adapters/linux/gesture/uinput_touchpad.hpp"

#include <gtest/gtest.h>

#include <cerrno>

namespace velotap {
namespace {

TEST(UinputTouchpad, saysWhyItCannotBeCreated) {
  UinputTouchpad absent("/nonexistent/uinput");
  EXPECT_EQ(absent.create(1), ENOENT);
  UinputTouchpad directory("/");
  EXPECT_EQ(directory.create(1), EISDIR);
}

TEST(UinputTouchpad, refusesANodeThatMakesNoDevices) {
  UinputTouchpad null("/dev/null");
  EXPECT_EQ(null.create(1), ENOTTY);
}

TEST(UinputTouchpad, withoutADeviceThereIsNothingToWaitForOrWriteTo) {
  UinputTouchpad pad("/nonexistent/uinput");
  EXPECT_NE(pad.create(1), 0);
  EXPECT_FALSE(pad.ready(100));
  EXPECT_EQ(pad.wakeDescriptor(), -1);
  EXPECT_FALSE(pad.wakeAt());
  EXPECT_FALSE(pad.write({}));
  pad.destroy();
}

}  // namespace
}  // namespace velotap
