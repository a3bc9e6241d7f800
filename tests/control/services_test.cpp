#include "control/services.hpp"

#include <gtest/gtest.h>

#include "support/desktop.hpp"
#include "support/touches.hpp"
#include "support/tracing_taps.hpp"

namespace velotap {
namespace {

using test::Lines;
using Type = MouseEventType;
using test::row;

// The core as the application wires it, from frames and clicks to posted events.
class ServicesTest : public ::testing::Test, protected test::Desktop {
 protected:
  ServicesTest() { multitouch.add({.name = "pad"}); }
  ~ServicesTest() override { EXPECT_EQ(multitouch.faults(), Lines{}); }

  void launch() {
    services.launch();
    frame({});
    said.take();
    multitouch.takeCalls();
    tracing.take();
  }
  void frame(const test::Frame& contacts) {
    ASSERT_TRUE(
        multitouch.deliver("pad", contacts.data(), static_cast<std::int32_t>(contacts.size())));
  }
  void turnThreeFingerDragOn() {
    systemPreferences.set("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerDrag", 1);
  }
  Platform traced() {
    return {.clock = clock,
            .mainQueue = mainQueue,
            .libraries = multitouch,
            .events = events,
            .taps = tracing,
            .preferences = preferences,
            .systemPreferences = systemPreferences,
            .workspace = workspace,
            .keyboardLayout = keyboardLayout,
            .notices = notices,
            .trust = trust,
            .alerts = alerts,
            .notifications = notifications,
            .log = log};
  }

  test::TracingTaps tracing{taps};
  Platform platform_ = traced();
  Services services{platform_};
};

TEST_F(ServicesTest, LaunchingStartsTheListeners) {
  keyboardLayout.select({{{5, "["}}});
  services.launch();
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(multitouch.takeCalls(), (Lines{"register pad", "start pad"}));
  EXPECT_EQ(tracing.take(),
            (Lines{"install hid", "install session", "enable hid", "enable session"}));
  EXPECT_EQ(services.keyCodes.keyCode(SynthesizedShortcut::back), 5);
  EXPECT_TRUE(services.apps.gestureContext());
}

TEST_F(ServicesTest, LaunchingWhileSwitchedOffStartsNothing) {
  services.defaults.set("enabled", false);
  services.launch();
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(multitouch.takeCalls(), Lines{});
  EXPECT_EQ(tracing.take(), Lines{});
  services.controller.restart();
  EXPECT_FALSE(services.controller.isRunning());
}

TEST_F(ServicesTest, LaunchingWithoutPermissionStartsNothingUntilItIsGiven) {
  trust.setTrusted(false);
  services.launch();
  EXPECT_FALSE(services.controller.isRunning());
  trust.setTrusted(true);
  services.controller.start();
  EXPECT_TRUE(services.controller.isRunning());
  trust.setTrusted(false);
  services.controller.start();
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(taps.installed(TapLocation::session), 0U);
  EXPECT_EQ(multitouch.heldReferences(), 0U);
}

TEST_F(ServicesTest, WithoutADeviceTheTapsAreNotEvenTried) {
  multitouch.setPresent("pad", false);
  services.launch();
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(tracing.take(), Lines{});
  EXPECT_EQ(said.take().back(), "no multitouch device could be started");
}

TEST_F(ServicesTest, WithoutTheConvertingTapTheEngineIsStoppedAgain) {
  taps.setInstallable(TapLocation::session, false);
  services.launch();
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(multitouch.takeCalls(),
            (Lines{"register pad", "start pad", "stop pad", "unregister pad", "release pad"}));
  EXPECT_EQ(multitouch.heldReferences(), 0U);
}

TEST_F(ServicesTest, StoppingStopsTheEngineAndThenTheTaps) {
  launch();
  services.controller.stop();
  EXPECT_EQ(multitouch.takeCalls(), (Lines{"stop pad", "unregister pad", "release pad"}));
  EXPECT_EQ(tracing.take(),
            (Lines{"disable hid", "disable session", "remove hid", "remove session"}));
}

TEST_F(ServicesTest, APhysicalClickWithThreeFingersBecomesAMiddleClick) {
  launch();
  frame(row(3));
  EXPECT_EQ(button(Type::rightDown, 7), "type=25 button=2");
  EXPECT_EQ(button(Type::rightDragged, 7), "type=27 button=2");
  EXPECT_EQ(button(Type::rightUp, 7), "type=26 button=2");
  frame({});
  EXPECT_EQ(posted.take(), Lines{}) << "the click consumed the tap";
}

TEST_F(ServicesTest, AConvertedPressLeavesTheOtherButtonAlone) {
  launch();
  frame(row(3));
  EXPECT_EQ(button(Type::leftDown, 7), "type=25 button=2");
  EXPECT_EQ(button(Type::rightUp, 8), "pass");
  EXPECT_EQ(button(Type::leftUp, 7), "type=26 button=2");
}

TEST_F(ServicesTest, AClickThatSoftwareMadePasses) {
  launch();
  frame(row(3));
  EXPECT_EQ(button(Type::leftDown, 7, false), "pass");
  EXPECT_EQ(button(Type::rightDown, 8, false), "pass");
}

TEST_F(ServicesTest, TheEchoOfATapIsSwallowedWithItsRelease) {
  turnThreeFingerDragOn();
  launch();
  frame(row(3));
  advance(0.1);
  frame({});
  EXPECT_EQ(posted.take().size(), 2U);
  EXPECT_EQ(button(Type::leftDown, 9, false), "drop");
  EXPECT_EQ(button(Type::leftUp, 10, false), "pass") << "of another press";
  EXPECT_EQ(button(Type::leftUp, 9, false), "drop");
  EXPECT_EQ(button(Type::leftDown, 11, false), "pass") << "one tap has one echo";
}

TEST_F(ServicesTest, WithFingersStillDownTheEchoPasses) {
  turnThreeFingerDragOn();
  launch();
  frame(row(3));
  advance(0.1);
  frame({});
  frame(row(1));
  EXPECT_EQ(button(Type::leftDown, 9, false), "pass");
  frame({});
  EXPECT_EQ(button(Type::leftDown, 10, false), "drop") << "the window stayed open";
}

TEST_F(ServicesTest, WithoutTheObservingTapNothingIsSwallowedAndEveryPressMayConvert) {
  turnThreeFingerDragOn();
  taps.setInstallable(TapLocation::hid, false);
  launch();
  frame(row(3));
  advance(0.1);
  frame({});
  EXPECT_EQ(button(Type::leftDown, 9, false), "pass");
  frame(row(3));
  EXPECT_EQ(button(Type::leftDown, 10, false), "type=25 button=2");
}

TEST_F(ServicesTest, ADisabledTapReleasesTheButtonAndGoesOn) {
  launch();
  frame(row(3));
  EXPECT_EQ(button(Type::leftDown, 7), "type=25 button=2");
  taps.disable(TapLocation::session, TapDisabled::byTimeout, true);
  EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(button(Type::leftUp, 7), "pass");
}

TEST_F(ServicesTest, ATapThatIsLostStopsEverything) {
  launch();
  int announced = 0;
  services.controller.closures.didChangeState = [&announced] { ++announced; };
  frame(row(3));
  EXPECT_EQ(button(Type::leftDown, 7), "type=25 button=2");
  taps.disable(TapLocation::session, TapDisabled::byUserInput, false);
  EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"}) << "once, not once more";
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(announced, 1);
  EXPECT_EQ(multitouch.heldReferences(), 0U);
  EXPECT_EQ(taps.installed(TapLocation::session), 0U);
}

TEST_F(ServicesTest, PausesReleaseAHeldButton) {
  launch();
  frame(row(3));
  EXPECT_EQ(button(Type::leftDown, 7), "type=25 button=2");
  notices.willSleep();
  mainQueue.runDue();
  EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_FALSE(services.controller.isRunning());
  notices.didWake();
  advance(10);
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(button(Type::leftUp, 7), "pass");
}

TEST_F(ServicesTest, ADeviceThatArrivesIsStartedAfterTwoSeconds) {
  launch();
  multitouch.add({.name = "mouse", .family = 112});
  notices.deviceAttached();
  advance(1.5);
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(services.engine.connectedDeviceClasses().size(), 1U);
  advance(1);
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(services.engine.connectedDeviceClasses().size(), 2U);
}

TEST_F(ServicesTest, ADeviceThatLeavesPausesUntilTheRestart) {
  launch();
  multitouch.setPresent("pad", false);
  notices.deviceDetached();
  mainQueue.runDue();
  EXPECT_FALSE(services.controller.isRunning());
  advance(2);
  EXPECT_FALSE(services.controller.isRunning()) << "nothing is left to listen to";
  multitouch.setPresent("pad", true);
  notices.deviceAttached();
  advance(2);
  EXPECT_TRUE(services.controller.isRunning());
}

}  // namespace
}  // namespace velotap
