#include "gestures/touch_engine.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "engine_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

class TouchEngineStart : public ::testing::Test, protected EngineKit {};

TEST_F(TouchEngineStart, WithoutDevicesThereIsNothingToListenTo) {
  EXPECT_FALSE(engine.start());
  EXPECT_EQ(log.take(), Lines{"registered on 0 device(s): []"});
  EXPECT_TRUE(engine.connectedDeviceClasses().empty());
}

TEST_F(TouchEngineStart, WithoutTheLibraryThereAreNoDevices) {
  library.add("pad", 128);
  library.libraryMissing = true;
  EXPECT_FALSE(engine.start());
}

TEST_F(TouchEngineStart, RegistersAndStartsEachDeviceInOrderAndSaysSo) {
  library.add("pad", 128).builtIn = true;
  library.add("mouse", 113);
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(library.takeCalls(),
            (Lines{"register pad", "start pad", "register mouse", "start mouse"}));
  EXPECT_EQ(log.take(), Lines{"registered on 2 device(s): [\"familyID=128 builtIn=true\", "
                              "\"familyID=113 builtIn=false\"]"});
  EXPECT_EQ(engine.connectedDeviceClasses(),
            (std::vector{DeviceClass::magicMouse, DeviceClass::trackpad}));
}

TEST_F(TouchEngineStart, ADeviceThatFailsIsSimplyAbsent) {
  library.add("first", 128).registers = false;
  library.add("second", 84);
  library.add("third", 128).starts = false;
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(library.takeCalls(),
            (Lines{"register first", "release first", "register second", "start second",
                   "register third", "start third", "unregister third", "release third"}));
  EXPECT_EQ(engine.connectedDeviceClasses(), std::vector{DeviceClass::magicMouse});
  EXPECT_EQ(log.take(), Lines{"registered on 1 device(s): [\"familyID=84 builtIn=false\"]"});
  engine.stop();
  EXPECT_EQ(library.takeCalls(), (Lines{"stop second", "unregister second", "release second"}));
  for (const auto& device : library.devices) EXPECT_EQ(device.references, 0) << device.name;
}

TEST_F(TouchEngineStart, IsRefusedWhenEveryDeviceFails) {
  library.add("first", 128).registers = false;
  library.add("second", 112).starts = false;
  EXPECT_FALSE(engine.start());
  EXPECT_TRUE(engine.connectedDeviceClasses().empty());
}

TEST_F(TouchEngineStart, AgainBeginsWithAStop) {
  library.add("pad", 128);
  library.add("mouse", 112);
  EXPECT_TRUE(engine.start());
  library.takeCalls();
  library.devices[0].listed = false;
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(library.takeCalls(),
            (Lines{"stop pad", "unregister pad", "release pad", "stop mouse", "unregister mouse",
                   "release mouse", "register mouse", "start mouse"}));
  EXPECT_EQ(engine.connectedDeviceClasses(), std::vector{DeviceClass::magicMouse});
  EXPECT_EQ(library.devices[0].references, 0);
  EXPECT_EQ(library.devices[1].references, 1);
}

TEST_F(TouchEngineStart, ClassesComeOnceAndInTheirOrder) {
  for (const std::int32_t family : {128, 129, 112, -1, 113}) library.add("device", family);
  library.add("unknown", 0).family = std::nullopt;
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(engine.connectedDeviceClasses(),
            (std::vector{DeviceClass::magicMouse, DeviceClass::trackpad}));
  engine.stop();
  EXPECT_TRUE(engine.connectedDeviceClasses().empty());
}

TEST_F(TouchEngineStart, ADeviceOfUnknownFamilyIsATrackpad) {
  library.add("unknown", 0).family = std::nullopt;
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(engine.connectedDeviceClasses(), std::vector{DeviceClass::trackpad});
}

TEST_F(TouchEngineStart, SaysNothingWhenNobodyAsked) {
  log.on = false;
  library.add("pad", 128);
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(log.take(), Lines{});
}

TEST_F(TouchEngineStart, AnEngineThatIsGoneLetsGoOfItsDevices) {
  auto& pad = library.add("pad", 128);
  {
    TouchEngine other(
        {multitouch, config, apps, pinch, activity, keyCodes, system, events, clock, log});
    EXPECT_TRUE(other.start());
  }
  EXPECT_EQ(pad.references, 0);
  EXPECT_EQ(pad.callback, nullptr);
}

class TouchEngineFrames : public EngineTest {};

TEST_F(TouchEngineFrames, ATapIsAMiddleClick) {
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick);
  EXPECT_EQ(outcomes(), Lines{"click"});
}

TEST_F(TouchEngineFrames, AFrameOfANullDeviceIsIgnored) {
  const Frame three = row(3);
  pad.callback(nullptr, three.data(), 3, 0, 0);
  EXPECT_FALSE(engine.hasActiveContact());
}

TEST_F(TouchEngineFrames, FramesOfUnknownDevicesAreIgnored) {
  Device stranger;
  const Frame three = row(3);
  engine.handleFrame(&stranger, three.data(), 3);
  EXPECT_FALSE(engine.hasActiveContact());
  engine.handleFrame(&stranger, nullptr, 0);
  EXPECT_EQ(events.take(), Lines{});
}

TEST_F(TouchEngineFrames, FramesAfterAStopAreIgnored) {
  frame(pad, row(3));
  engine.stop();
  engine.handleFrame(&pad, nullptr, 0);
  EXPECT_EQ(events.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  EXPECT_FALSE(engine.hasActiveContact());
}

TEST_F(TouchEngineFrames, ANullPointerAndACountBelowOneAreEmptyFrames) {
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    frame(pad, row(3));
    const Frame three = row(3);
    EXPECT_TRUE(library.deliver(pad, three.data(), count));
    EXPECT_EQ(events.take(), kMiddleClick) << count;
    clock.advance(1);
  }
  frame(pad, row(3));
  EXPECT_TRUE(library.deliver(pad, nullptr, 3));
  EXPECT_EQ(events.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, ContactsThatDoNotTouchEndTheSession) {
  frame(pad, row(3));
  Frame leaving = row(3);
  for (MTTouch& contact : leaving) contact.stage = 6;
  frame(pad, leaving);
  EXPECT_EQ(events.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, FingersThatWereDownAtTheStartBeginNothing) {
  start();
  tap(pad, 3);
  EXPECT_EQ(events.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick) << "they all lifted once";
}

TEST_F(TouchEngineFrames, RestartingDropsARunningSession) {
  frame(pad, row(3));
  start();
  lift(pad);
  EXPECT_EQ(events.take(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, SwitchingTheFrontmostApplicationAbandonsTheSession) {
  frame(pad, row(3));
  workspace.activate(kBrowser);
  frame(pad, row(3));
  lift(pad);
  EXPECT_EQ(events.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, SwitchingBackDoesNotReviveTheSession) {
  frame(pad, row(3));
  workspace.activate(kBrowser);
  frame(pad, row(3));
  workspace.activate(kEditor);
  frame(pad, row(3));
  lift(pad);
  EXPECT_EQ(events.take(), Lines{});
}

TEST_F(TouchEngineFrames, ASwitchSeenOnlyAtTheEndAbandonsItToo) {
  frame(pad, row(3));
  workspace.activate(kBrowser);
  lift(pad);
  EXPECT_EQ(events.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick) << "an empty frame makes the device ready";
}

TEST_F(TouchEngineFrames, ASwitchThereAndBackBetweenTwoFramesGoesUnnoticed) {
  frame(pad, row(3));
  workspace.activate(kBrowser);
  workspace.activate(kEditor);
  lift(pad);
  EXPECT_EQ(events.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, TurningTheSwitchOffAbandonsTheSession) {
  frame(pad, row(3));
  set("enabled", false);
  frame(pad, row(3));
  set("enabled", true);
  frame(pad, row(3));
  lift(pad);
  EXPECT_EQ(events.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, WhileSwitchedOffNothingIsRecognisedButLiftingIsSeen) {
  set("enabled", false);
  tap(pad, 3);
  EXPECT_EQ(events.take(), Lines{});
  set("enabled", true);
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, WithNobodyInFrontNothingIsRecognised) {
  workspace.activate(std::nullopt);
  tap(pad, 3);
  EXPECT_EQ(events.take(), Lines{});
  frame(pad, row(3));
  workspace.activate(kEditor);
  frame(pad, row(3));
  lift(pad);
  EXPECT_EQ(events.take(), Lines{}) << "these fingers came down before";
}

TEST_F(TouchEngineFrames, IgnoredApplicationsGetNothing) {
  config.setIgnoredApps({kEditor});
  tap(pad, 3);
  EXPECT_EQ(events.take(), Lines{});
  config.setIgnoredApps({});
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, ARuleAddedDuringASessionAbandonsIt) {
  frame(pad, row(3));
  config.setIgnoredApps({kEditor});
  lift(pad);
  EXPECT_EQ(events.take(), Lines{});
}

TEST_F(TouchEngineFrames, OurOwnWindowsGetTapsOnlyOverThePracticeTarget) {
  workspace.activate(kOwnApp);
  tap(pad, 3);
  EXPECT_EQ(events.take(), Lines{});
  practice.set(Rect{500, 300, 100, 100});
  tap(pad, 3);
  EXPECT_EQ(events.take(), kMiddleClick);
  EXPECT_EQ(outcomes(), Lines{"click"});
  clock.advance(1);
  frame(pad, row(3));
  events.movePointer(Point{0, 0});
  lift(pad);
  EXPECT_EQ(events.take(), Lines{}) << "the pointer left the target";
}

TEST_F(TouchEngineFrames, DevicesDoNotDisturbEachOther) {
  frame(pad, row(3));
  clock.advance(0.05);
  frame(mouse, row(3));
  clock.advance(0.05);
  lift(pad);
  EXPECT_EQ(events.take(), kMiddleClick);
  clock.advance(0.1);
  lift(mouse);
  EXPECT_EQ(events.take(), kMiddleClick);
  EXPECT_EQ(outcomes(), (Lines{"click", "click"}));
}

TEST_F(TouchEngineFrames, AnIdleDeviceCostsNoMoreThanALookUp) {
  tap(pad, 3);
  workspace.ownAsked = 0;
  for (int i = 0; i < 100; ++i) lift(pad);
  EXPECT_EQ(workspace.ownAsked, 0) << "nobody asks who is in front";
  frame(pad, row(1));
  EXPECT_GT(workspace.ownAsked, 0);
}

TEST_F(TouchEngineFrames, TheFirstEmptyFrameAfterAStartIsNotIdle) {
  start();
  workspace.ownAsked = 0;
  lift(pad);
  EXPECT_GT(workspace.ownAsked, 0);
  workspace.ownAsked = 0;
  lift(pad);
  EXPECT_EQ(workspace.ownAsked, 0);
}

TEST_F(TouchEngineFrames, AnEmptyFrameOfAnUnknownDeviceAsksNothing) {
  Device stranger;
  workspace.ownAsked = 0;
  engine.handleFrame(&stranger, nullptr, 0);
  EXPECT_EQ(workspace.ownAsked, 0);
}

TEST_F(TouchEngineFrames, AFingerAnywhereIsAnActiveContact) {
  EXPECT_FALSE(engine.hasActiveContact());
  frame(mouse, row(1));
  EXPECT_TRUE(engine.hasActiveContact());
  frame(pad, row(2));
  lift(mouse);
  EXPECT_TRUE(engine.hasActiveContact());
  lift(pad);
  EXPECT_FALSE(engine.hasActiveContact());
}

TEST_F(TouchEngineFrames, ContactsAreCountedEvenWhereNothingIsRecognised) {
  workspace.activate(std::nullopt);
  frame(pad, row(2));
  EXPECT_TRUE(engine.hasActiveContact());
  set("enabled", false);
  lift(pad);
  EXPECT_FALSE(engine.hasActiveContact());
}

TEST_F(TouchEngineFrames, AHeldConversionIsAnActiveContact) {
  frame(pad, row(3));
  ASSERT_TRUE(engine.shouldConvertClick(Button::left));
  lift(pad);
  EXPECT_TRUE(engine.hasActiveContact());
  EXPECT_TRUE(engine.endConversion(Button::left));
  EXPECT_FALSE(engine.hasActiveContact());
}

TEST_F(TouchEngineFrames, StoppingReleasesAHeldConversionOnce) {
  frame(pad, row(3));
  ASSERT_TRUE(engine.shouldConvertClick(Button::right));
  log.take();
  engine.stop();
  EXPECT_EQ(events.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_EQ(log.take(), Lines{"cancelled held middle click at (512.0, 384.5)"});
  EXPECT_EQ(library.takeCalls(), (Lines{"stop pad", "unregister pad", "release pad", "stop mouse",
                                        "unregister mouse", "release mouse"}));
  engine.stop();
  EXPECT_EQ(events.take(), Lines{});
  EXPECT_EQ(library.takeCalls(), Lines{});
}

TEST_F(TouchEngineFrames, StartingReleasesAHeldConversionToo) {
  frame(pad, row(3));
  ASSERT_TRUE(engine.shouldConvertClick(Button::left));
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(events.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
}

TEST_F(TouchEngineFrames, AnEngineThatIsGoneReleasesAHeldConversion) {
  engine.stop();
  {
    TouchEngine other(
        {multitouch, config, apps, pinch, activity, keyCodes, system, events, clock, log});
    EXPECT_TRUE(other.start());
    lift(pad);
    frame(pad, row(3));
    ASSERT_TRUE(other.shouldConvertClick(Button::left));
  }
  EXPECT_EQ(events.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
}

// The pinch step.

class TouchEnginePinch : public EngineTest {
 protected:
  // Two fingers `apart` hundredths of the surface (millimetres, here) from each other.
  static Frame pair(float apart) {
    return {touch({.id = 1, .x = 0.5F - apart / 200}), touch({.id = 2, .x = 0.5F + apart / 200})};
  }
  void beginPinch(Device& device) {
    frame(device, pair(20));
    frame(device, pair(26));
  }
  Lines phases() {
    Lines result;
    for (const GestureEvent& event : events.takeGestures()) {
      const std::string kind = event.kind == GestureKind::magnify ? "magnify " : "rotate ";
      result.push_back(kind + std::to_string(static_cast<int>(event.phase)));
    }
    return result;
  }
};

TEST_F(TouchEnginePinch, TwoFingersOnAMouseZoom) {
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 1"});
  EXPECT_TRUE(pinch.isPinching());
  frame(mouse, pair(28));
  EXPECT_EQ(phases(), Lines{"magnify 2"});
  lift(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 4"});
  EXPECT_FALSE(pinch.isPinching());
}

TEST_F(TouchEnginePinch, TwoFingersOnATrackpadDoNot) {
  beginPinch(pad);
  lift(pad);
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, WithBothSettingsOffThereIsNoPinch) {
  set("mousePinchZoom", false);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, TurningBothSettingsOffCancels) {
  beginPinch(mouse);
  set("mousePinchZoom", false);
  frame(mouse, pair(28));
  EXPECT_EQ(phases(), (Lines{"magnify 1", "magnify 8"}));
  set("mousePinchZoom", true);
  frame(mouse, pair(34));
  frame(mouse, pair(40));
  EXPECT_EQ(phases(), Lines{}) << "blocked until the fingers lift";
  lift(mouse);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 1"});
}

TEST_F(TouchEnginePinch, WithOneSettingOnTheOtherGestureIsRefused) {
  set("mousePinchZoom", false);
  set("mouseRotate", true);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
  lift(mouse);
  frame(mouse, {touch({.id = 1, .x = 0.4F}), touch({.id = 2, .x = 0.6F})});
  frame(mouse, {touch({.id = 1, .x = 0.4F, .y = 0.47F}), touch({.id = 2, .x = 0.6F, .y = 0.53F})});
  EXPECT_EQ(phases(), Lines{"rotate 1"});
}

TEST_F(TouchEnginePinch, AConvertedClickCancels) {
  set("mouseClick2", true);
  frame(mouse, pair(20));
  ASSERT_TRUE(engine.shouldConvertClick(Button::left));
  frame(mouse, pair(26));
  EXPECT_EQ(phases(), Lines{}) << "the hand drags, it does not zoom";
  EXPECT_TRUE(engine.endConversion(Button::left));
  frame(mouse, pair(32));
  frame(mouse, pair(40));
  EXPECT_EQ(phases(), Lines{}) << "blocked until the fingers lift";
  lift(mouse);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 1"});
}

TEST_F(TouchEnginePinch, AConversionHeldOnAnotherDeviceKeepsAMouseFromPinching) {
  frame(pad, row(3));
  ASSERT_TRUE(engine.shouldConvertClick(Button::left));
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, OverThePracticeTargetThereIsNoPinch) {
  workspace.activate(kOwnApp);
  practice.set(Rect{0, 0, 2000, 2000});
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, FingersThatWereDownAtTheStartDoNotPinch) {
  start();
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{});
  lift(mouse);
  beginPinch(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 1"});
}

TEST_F(TouchEnginePinch, SwitchingApplicationsCancelsWithoutAnEventForTheNewOne) {
  beginPinch(mouse);
  phases();
  log.take();
  workspace.activate(kBrowser);
  frame(mouse, pair(28));
  EXPECT_EQ(phases(), Lines{}) << "the new application never saw the beginning";
  EXPECT_EQ(log.take(), Lines{"pinch cancelled"});
  EXPECT_FALSE(pinch.isPinching());
  frame(mouse, pair(34));
  frame(mouse, pair(40));
  EXPECT_EQ(phases(), Lines{});
}

TEST_F(TouchEnginePinch, LosingTheTargetAtTheLiftCancels) {
  beginPinch(mouse);
  phases();
  config.setKeystrokeZoomApps({});
  set("enabled", false);
  lift(mouse);
  EXPECT_EQ(phases(), Lines{"magnify 8"}) << "the editor is still in front and saw the beginning";
}

TEST_F(TouchEnginePinch, StoppingCancels) {
  beginPinch(mouse);
  engine.stop();
  EXPECT_EQ(phases(), (Lines{"magnify 1", "magnify 8"}));
  EXPECT_FALSE(pinch.isPinching());
}

TEST_F(TouchEnginePinch, KeystrokeApplicationsGetKeystrokes) {
  config.setKeystrokeZoomApps({kEditor});
  beginPinch(mouse);
  for (float apart = 28; apart < 60; apart += 2) frame(mouse, pair(apart));
  lift(mouse);
  EXPECT_EQ(phases(), Lines{});
  const Lines keys = events.take();
  ASSERT_GE(keys.size(), 4U);
  for (std::size_t i = 0; i < keys.size(); i += 2) {
    EXPECT_EQ(keys[i], "key 24 down flags=1048576");
    EXPECT_EQ(keys[i + 1], "key 24 up flags=1048576");
  }
}

TEST_F(TouchEnginePinch, APinchIsNoTapEither) {
  set("mouseTap3", true);
  frame(mouse, pair(20));
  frame(mouse, pair(26));
  lift(mouse);
  EXPECT_EQ(events.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
}

}  // namespace
}  // namespace velotap
