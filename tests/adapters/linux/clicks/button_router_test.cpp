#include "adapters/linux/clicks/button_router.hpp"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace velotap::test {
namespace {

using Outlet = Emission::Outlet;

Emission on(Outlet outlet, std::uint16_t code, bool down) {
  return {.outlet = outlet, .code = code, .down = down};
}

TEST(ButtonRouter, anUnchangedClickLeavesByTheMirror) {
  ButtonRouter router(true);
  EXPECT_EQ(router.press(BTN_RIGHT, PressAnswer::unchanged), on(Outlet::mirror, BTN_RIGHT, true));
  EXPECT_TRUE(router.isDown(BTN_RIGHT));
  EXPECT_EQ(router.release(BTN_RIGHT), on(Outlet::mirror, BTN_RIGHT, false));
  EXPECT_TRUE(router.nothingDown());
}

TEST(ButtonRouter, aConvertedClickLeavesByThePointerAlone) {
  ButtonRouter router(true);
  EXPECT_EQ(router.press(BTN_LEFT, PressAnswer::middle), on(Outlet::pointer, BTN_MIDDLE, true));
  EXPECT_EQ(router.release(BTN_LEFT), on(Outlet::pointer, BTN_MIDDLE, false));
}

TEST(ButtonRouter, aDroppedClickIsHeldButPressesNothing) {
  ButtonRouter router(true);
  EXPECT_EQ(router.press(BTN_LEFT, PressAnswer::dropped), Emission());
  EXPECT_TRUE(router.isDown(BTN_LEFT));
  EXPECT_EQ(router.release(BTN_LEFT), Emission());
  EXPECT_TRUE(router.nothingDown());
}

TEST(ButtonRouter, thePhantomMiddleZoneIsTheLeftButton) {
  ButtonRouter router(true);
  EXPECT_EQ(router.meaning(BTN_MIDDLE), BTN_LEFT);
  EXPECT_EQ(router.press(BTN_MIDDLE, PressAnswer::unchanged), on(Outlet::mirror, BTN_LEFT, true));
  EXPECT_EQ(router.release(BTN_MIDDLE), on(Outlet::mirror, BTN_LEFT, false));
}

TEST(ButtonRouter, aRealMiddleButtonStaysOne) {
  ButtonRouter router(false);
  EXPECT_EQ(router.press(BTN_MIDDLE, PressAnswer::unchanged), on(Outlet::mirror, BTN_MIDDLE, true));
  EXPECT_EQ(router.release(BTN_MIDDLE), on(Outlet::mirror, BTN_MIDDLE, false));
}

TEST(ButtonRouter, aSecondPressChangesNothing) {
  ButtonRouter router(true);
  static_cast<void>(router.press(BTN_LEFT, PressAnswer::middle));
  EXPECT_EQ(router.press(BTN_LEFT, PressAnswer::unchanged), Emission());
  EXPECT_EQ(router.release(BTN_LEFT), on(Outlet::pointer, BTN_MIDDLE, false));
}

TEST(ButtonRouter, theReleaseOfWhatIsNotDownIsNothing) {
  ButtonRouter router(true);
  EXPECT_EQ(router.release(BTN_LEFT), Emission());
}

TEST(ButtonRouter, ofTwoButtonsThatPressTheSameTheLastReleasesIt) {
  ButtonRouter router(true);
  EXPECT_EQ(router.press(BTN_LEFT, PressAnswer::unchanged), on(Outlet::mirror, BTN_LEFT, true));
  EXPECT_EQ(router.press(BTN_MIDDLE, PressAnswer::unchanged), Emission());
  EXPECT_EQ(router.release(BTN_LEFT), Emission());
  EXPECT_EQ(router.release(BTN_MIDDLE), on(Outlet::mirror, BTN_LEFT, false));
}

TEST(ButtonRouter, buttonsOfDifferentOutletsAreIndependent) {
  ButtonRouter router(true);
  static_cast<void>(router.press(BTN_LEFT, PressAnswer::middle));
  static_cast<void>(router.press(BTN_RIGHT, PressAnswer::unchanged));
  EXPECT_EQ(router.release(BTN_RIGHT), on(Outlet::mirror, BTN_RIGHT, false));
  EXPECT_EQ(router.release(BTN_LEFT), on(Outlet::pointer, BTN_MIDDLE, false));
}

TEST(ButtonRouter, givingUpReleasesEverythingOnceAndInOrder) {
  ButtonRouter router(true);
  static_cast<void>(router.press(BTN_LEFT, PressAnswer::middle));
  static_cast<void>(router.press(BTN_RIGHT, PressAnswer::unchanged));
  static_cast<void>(router.press(BTN_MIDDLE, PressAnswer::dropped));
  EXPECT_EQ(router.releaseAll(), (std::vector{on(Outlet::pointer, BTN_MIDDLE, false),
                                              on(Outlet::mirror, BTN_RIGHT, false)}));
  EXPECT_TRUE(router.nothingDown());
  EXPECT_TRUE(router.releaseAll().empty());
}

}  // namespace
}  // namespace velotap::test
