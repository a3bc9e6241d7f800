#include "control/services.hpp"

#include <gtest/gtest.h>

#include "support/ports.hpp"
#include "support/touches.hpp"

namespace velotap {
namespace {

using Lines = std::vector<std::string>;
using Type = MouseEventType;
using test::row;

constexpr const char* kEditor = "com.example.editor";

// The core as the application wires it, from frames and clicks to posted events.
class ServicesTest : public ::testing::Test, protected test::Ports {
 protected:
  ServicesTest() { workspace.setFront(RunningApplication{AppId::intern(kEditor), "Editor"}); }

  void launch() {
    services.launch();
    for (auto& device : library.devices) library.deliver(device, nullptr, 0);
    log.take();
    library.takeCalls();
    taps.calls.clear();
  }
  void frame(const test::Frame& contacts) { ASSERT_TRUE(library.deliver(pad, contacts)); }

  test::FakeMultitouch::Device& pad = library.add("pad", 128);
  Services services{platform};
};

TEST_F(ServicesTest, LaunchingStartsTheListeners) {
  layout.keys = {{5, "["}};
  services.launch();
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(library.takeCalls(), (Lines{"register pad", "start pad"}));
  EXPECT_TRUE(taps.session && taps.session->enabled);
  EXPECT_EQ(services.keyCodes.keyCode(SynthesizedShortcut::back), 5);
  EXPECT_TRUE(services.apps.gestureContext());
  EXPECT_EQ(notices.deviceWatches, 1);
}

TEST_F(ServicesTest, LaunchingWhileSwitchedOffStartsNothing) {
  services.defaults.set("enabled", false);
  services.launch();
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(library.takeCalls(), Lines{});
  EXPECT_EQ(taps.calls, Lines{});
  services.controller.restart();
  EXPECT_FALSE(services.controller.isRunning());
}

TEST_F(ServicesTest, LaunchingWithoutPermissionStartsNothingUntilItIsGiven) {
  trust.granted = false;
  services.launch();
  EXPECT_FALSE(services.controller.isRunning());
  trust.granted = true;
  services.controller.start();
  EXPECT_TRUE(services.controller.isRunning());
  trust.granted = false;
  services.controller.start();
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(taps.session, nullptr);
  EXPECT_EQ(pad.references, 0);
}

TEST_F(ServicesTest, WithoutADeviceTheTapsAreNotEvenTried) {
  pad.starts = false;
  services.launch();
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(taps.calls, Lines{});
  EXPECT_EQ(log.take().back(), "no multitouch device could be started");
}

TEST_F(ServicesTest, WithoutTheConvertingTapTheEngineIsStoppedAgain) {
  taps.sessionFails = true;
  services.launch();
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(library.takeCalls(),
            (Lines{"register pad", "start pad", "stop pad", "unregister pad", "release pad"}));
  EXPECT_EQ(pad.references, 0);
}

TEST_F(ServicesTest, StoppingStopsTheEngineAndThenTheTaps) {
  launch();
  services.controller.stop();
  EXPECT_EQ(library.takeCalls(), (Lines{"stop pad", "unregister pad", "release pad"}));
  EXPECT_EQ(taps.calls, (Lines{"disable hid", "disable session", "remove hid", "remove session"}));
}

TEST_F(ServicesTest, APhysicalClickWithThreeFingersBecomesAMiddleClick) {
  launch();
  frame(row(3));
  EXPECT_EQ(taps.button(Type::rightDown, 7), "type=25 button=2");
  EXPECT_EQ(taps.button(Type::rightDragged, 7), "type=27 button=2");
  EXPECT_EQ(taps.button(Type::rightUp, 7), "type=26 button=2");
  frame({});
  EXPECT_EQ(events.take(), Lines{}) << "the click consumed the tap";
}

TEST_F(ServicesTest, AConvertedPressLeavesTheOtherButtonAlone) {
  launch();
  frame(row(3));
  EXPECT_EQ(taps.button(Type::leftDown, 7), "type=25 button=2");
  EXPECT_EQ(taps.button(Type::rightUp, 8), "pass");
  EXPECT_EQ(taps.button(Type::leftUp, 7), "type=26 button=2");
}

TEST_F(ServicesTest, AClickThatSoftwareMadePasses) {
  launch();
  frame(row(3));
  EXPECT_EQ(taps.button(Type::leftDown, 7, false), "pass");
  EXPECT_EQ(taps.button(Type::rightDown, 8, false), "pass");
}

TEST_F(ServicesTest, TheEchoOfATapIsSwallowedWithItsRelease) {
  system.set("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerDrag", 1);
  launch();
  frame(row(3));
  clock.advance(0.1);
  frame({});
  EXPECT_EQ(events.take().size(), 2U);
  EXPECT_EQ(taps.button(Type::leftDown, 9, false), "drop");
  EXPECT_EQ(taps.button(Type::leftUp, 10, false), "pass") << "of another press";
  EXPECT_EQ(taps.button(Type::leftUp, 9, false), "drop");
  EXPECT_EQ(taps.button(Type::leftDown, 11, false), "pass") << "one tap has one echo";
}

TEST_F(ServicesTest, WithFingersStillDownTheEchoPasses) {
  system.set("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerDrag", 1);
  launch();
  frame(row(3));
  clock.advance(0.1);
  frame({});
  frame(row(1));
  EXPECT_EQ(taps.button(Type::leftDown, 9, false), "pass");
  frame({});
  EXPECT_EQ(taps.button(Type::leftDown, 10, false), "drop") << "the window stayed open";
}

TEST_F(ServicesTest, WithoutTheObservingTapNothingIsSwallowedAndEveryPressMayConvert) {
  system.set("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerDrag", 1);
  taps.hidFails = true;
  launch();
  frame(row(3));
  clock.advance(0.1);
  frame({});
  EXPECT_EQ(taps.button(Type::leftDown, 9, false), "pass");
  frame(row(3));
  EXPECT_EQ(taps.button(Type::leftDown, 10, false), "type=25 button=2");
}

TEST_F(ServicesTest, ADisabledTapReleasesTheButtonAndGoesOn) {
  launch();
  frame(row(3));
  EXPECT_EQ(taps.button(Type::leftDown, 7), "type=25 button=2");
  test::FakeTaps::disable(taps.session, TapDisabled::byTimeout);
  EXPECT_EQ(events.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(taps.button(Type::leftUp, 7), "pass");
}

TEST_F(ServicesTest, ATapThatIsLostStopsEverything) {
  launch();
  int announced = 0;
  services.controller.closures.didChangeState = [&announced] { ++announced; };
  frame(row(3));
  EXPECT_EQ(taps.button(Type::leftDown, 7), "type=25 button=2");
  taps.revives = false;
  test::FakeTaps::disable(taps.session, TapDisabled::byUserInput);
  EXPECT_EQ(events.take(), Lines{"mouse up 2 at (512.0, 384.5)"}) << "once, not once more";
  EXPECT_FALSE(services.controller.isRunning());
  EXPECT_EQ(announced, 1);
  EXPECT_EQ(pad.references, 0);
  EXPECT_EQ(taps.session, nullptr);
}

TEST_F(ServicesTest, PausesReleaseAHeldButton) {
  launch();
  frame(row(3));
  EXPECT_EQ(taps.button(Type::leftDown, 7), "type=25 button=2");
  notices.willSleep.notify();
  queue.runDue();
  EXPECT_EQ(events.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_FALSE(services.controller.isRunning());
  notices.didWake.notify();
  queue.advance(10);
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(taps.button(Type::leftUp, 7), "pass");
}

TEST_F(ServicesTest, ADeviceThatArrivesIsStartedAfterTwoSeconds) {
  launch();
  library.add("mouse", 112);
  notices.attached.notify();
  queue.advance(1.5);
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(services.engine.connectedDeviceClasses().size(), 1U);
  queue.advance(1);
  EXPECT_TRUE(services.controller.isRunning());
  EXPECT_EQ(services.engine.connectedDeviceClasses().size(), 2U);
}

TEST_F(ServicesTest, ADeviceThatLeavesPausesUntilTheRestart) {
  launch();
  pad.listed = false;
  notices.detached.notify();
  queue.runDue();
  EXPECT_FALSE(services.controller.isRunning());
  queue.advance(2);
  EXPECT_FALSE(services.controller.isRunning()) << "nothing is left to listen to";
  pad.listed = true;
  notices.attached.notify();
  queue.advance(2);
  EXPECT_TRUE(services.controller.isRunning());
}

}  // namespace
}  // namespace velotap
