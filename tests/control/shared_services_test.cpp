// The one instance of each service, made lazily over the platform of the process and wired as the
// application needs them. A program of its own: these instances live until it ends.

#include <gtest/gtest.h>

#include "config/app_tracker.hpp"
#include "config/config.hpp"
#include "control/controller.hpp"
#include "gestures/touch_engine.hpp"
#include "support/desktop.hpp"
#include "support/touches.hpp"

namespace velotap {
namespace {

using test::Lines;
using test::row;

// Made before every service, so that it is gone after all of them.
test::Desktop& desktop() {
  static test::Desktop instance;
  static const bool current = [] {
    Platform::setCurrent(instance.platform);
    return true;
  }();
  static_cast<void>(current);
  return instance;
}

void frame(const test::Frame& contacts) {
  ASSERT_TRUE(desktop().multitouch.deliver("pad", contacts.data(),
                                           static_cast<std::int32_t>(contacts.size())));
}

TEST(SharedServices, AreOneEach) {
  desktop();
  EXPECT_EQ(&Controller::shared(), &Controller::shared());
  EXPECT_EQ(&TouchEngine::shared(), &TouchEngine::shared());
  EXPECT_EQ(&PinchEngine::shared(), &PinchEngine::shared());
  EXPECT_EQ(&TapActivityLog::shared(), &TapActivityLog::shared());
  EXPECT_EQ(&AppTracker::shared(), &AppTracker::shared());
  EXPECT_EQ(&PracticeTarget::shared(), &PracticeTarget::shared());
  EXPECT_EQ(&ShortcutKeyCodes::shared(), &ShortcutKeyCodes::shared());
  EXPECT_EQ(&Config::shared(), &Config::shared());
  EXPECT_EQ(&MT::shared(), &MT::shared());
}

TEST(SharedServices, AreWiredToEachOther) {
  desktop().multitouch.add({.name = "pad"});
  desktop().activate("com.example.editor");
  AppTracker::shared().start();
  int announced = 0;
  Controller::shared().closures.didChangeState = [&announced] { ++announced; };
  Controller::shared().start();
  ASSERT_TRUE(Controller::shared().isRunning());
  EXPECT_EQ(announced, 1);

  frame({});
  frame(row(3));
  frame({});
  EXPECT_EQ(desktop().posted.take().size(), 2U) << "a tap is a click";
  EXPECT_EQ(TapActivityLog::shared().items().size(), 1U);

  frame(row(3));
  EXPECT_EQ(desktop().button(MouseEventType::leftDown, 7), "type=25 button=2");
  desktop().taps.disable(TapLocation::session, TapDisabled::byTimeout, false);
  EXPECT_EQ(desktop().posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_FALSE(Controller::shared().isRunning()) << "a lost tap stops the controller";
  EXPECT_EQ(announced, 2);
  EXPECT_EQ(desktop().multitouch.heldReferences(), 0U);

  // What is still running when the program ends must end with it.
  Controller::shared().closures.didChangeState = {};
  Controller::shared().start();
  EXPECT_TRUE(Controller::shared().isRunning());
}

TEST(SharedServicesDeathTest, WithoutAPlatformThereIsNone) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(static_cast<void>(Platform::current()),
               "a service was used before the platform was set");
}

}  // namespace
}  // namespace velotap
