#include "gestures/touch_engine.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <optional>
#include <string_view>

#include "engine_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

class TouchEngineStart : public ::testing::Test, protected EngineKit {};

TEST_F(TouchEngineStart, WithoutDevicesThereIsNothingToListenTo) {
  EXPECT_FALSE(engine.start());
  EXPECT_EQ(said.take(), Lines{"registered on 0 device(s): []"});
  EXPECT_TRUE(engine.connectedDeviceClasses().empty());
}

TEST_F(TouchEngineStart, WithoutTheLibraryThereAreNoDevices) {
  addDevices();
  multitouch.setMissing(true);
  EXPECT_FALSE(engine.start());
}

TEST_F(TouchEngineStart, RegistersAndStartsEachDeviceInOrderAndSaysSo) {
  multitouch.add({.name = pad, .family = 128, .builtIn = true});
  multitouch.add({.name = mouse, .family = 113});
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(multitouch.takeCalls(),
            (Lines{"register pad", "start pad", "register mouse", "start mouse"}));
  EXPECT_EQ(said.take(), Lines{"registered on 2 device(s): [\"familyID=128 builtIn=true\", "
                               "\"familyID=113 builtIn=false\"]"});
  EXPECT_EQ(engine.connectedDeviceClasses(),
            (std::vector{DeviceClass::magicMouse, DeviceClass::trackpad}));
}

TEST_F(TouchEngineStart, ADeviceThatFailsIsSimplyAbsent) {
  multitouch.add({.name = "first", .registers = false});
  multitouch.add({.name = "second", .family = 84});
  multitouch.add({.name = "third", .starts = false});
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(multitouch.takeCalls(),
            (Lines{"register first", "release first", "register second", "start second",
                   "register third", "start third", "unregister third", "release third"}));
  EXPECT_EQ(engine.connectedDeviceClasses(), std::vector{DeviceClass::magicMouse});
  EXPECT_EQ(said.take(), Lines{"registered on 1 device(s): [\"familyID=84 builtIn=false\"]"});
  engine.stop();
  EXPECT_EQ(multitouch.takeCalls(), (Lines{"stop second", "unregister second", "release second"}));
  EXPECT_EQ(multitouch.heldReferences(), 0U);
}

TEST_F(TouchEngineStart, IsRefusedWhenEveryDeviceFails) {
  multitouch.add({.name = "first", .registers = false});
  multitouch.add({.name = "second", .starts = false});
  EXPECT_FALSE(engine.start());
  EXPECT_TRUE(engine.connectedDeviceClasses().empty());
}

TEST_F(TouchEngineStart, AgainBeginsWithAStop) {
  addDevices();
  EXPECT_TRUE(engine.start());
  multitouch.takeCalls();
  multitouch.setPresent(pad, false);
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(multitouch.takeCalls(),
            (Lines{"stop pad", "unregister pad", "release pad", "stop mouse", "unregister mouse",
                   "release mouse", "register mouse", "start mouse"}));
  EXPECT_EQ(engine.connectedDeviceClasses(), std::vector{DeviceClass::magicMouse});
  EXPECT_EQ(multitouch.heldReferences(), 1U);
}

TEST_F(TouchEngineStart, ClassesComeOnceAndInTheirOrder) {
  for (const std::int32_t family : {128, 129, 112, -1, 113}) {
    multitouch.add({.name = std::to_string(family), .family = family});
  }
  multitouch.add({.name = "unknown", .family = std::nullopt});
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(engine.connectedDeviceClasses(),
            (std::vector{DeviceClass::magicMouse, DeviceClass::trackpad}));
  engine.stop();
  EXPECT_TRUE(engine.connectedDeviceClasses().empty());
}

TEST_F(TouchEngineStart, ADeviceOfUnknownFamilyIsATrackpad) {
  multitouch.add({.name = "unknown", .family = std::nullopt});
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(engine.connectedDeviceClasses(), std::vector{DeviceClass::trackpad});
}

TEST_F(TouchEngineStart, AnnouncesGesturesWhereAMouseMayPinch) {
  multitouch.add({.name = pad, .family = 128});
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(events.preparations(), 0) << "trackpads do not pinch here";
  multitouch.add({.name = mouse, .family = 112, .starts = false});
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(events.preparations(), 0) << "it could not be started";
  multitouch.add({.name = "second", .family = 113});
  set("mousePinchZoom", false);
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(events.preparations(), 0) << "nobody wants to";
  set("mouseRotate", true);
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(events.preparations(), 1);
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(events.preparations(), 2) << "what was ready may be gone since";
  multitouch.takeCalls();
}

TEST_F(TouchEngineStart, SaysNothingWhenNobodyAsked) {
  log.setEnabled(false);
  addDevices();
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(said.take(), Lines{});
}

TEST_F(TouchEngineStart, AnEngineThatIsGoneLetsGoOfItsDevices) {
  addDevices();
  {
    TouchEngine other(services());
    EXPECT_TRUE(other.start());
  }
  EXPECT_EQ(multitouch.heldReferences(), 0U);
  EXPECT_FALSE(multitouch.isRunning(pad));
}

class TouchEngineFrames : public EngineTest {};

TEST_F(TouchEngineFrames, ATapIsAMiddleClick) {
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick);
  EXPECT_EQ(outcomes(), Lines{"click"});
}

TEST_F(TouchEngineFrames, GesturesSwitchedOnLaterAreAnnouncedAtTheNextTouch) {
  set("mousePinchZoom", false);
  start();
  const int before = events.preparations();
  frame(mouse, row(1));
  lift(mouse);
  EXPECT_EQ(events.preparations(), before);
  set("mousePinchZoom", true);
  frame(pad, row(2));
  lift(pad);
  EXPECT_EQ(events.preparations(), before);
  for (int i = 0; i < 3; ++i) {
    frame(mouse, row(1));
    lift(mouse);
  }
  EXPECT_EQ(events.preparations(), before + 1);
}

TEST_F(TouchEngineFrames, FramesOfUnknownDevicesAreIgnored) {
  int stranger = 0;
  const Frame three = row(3);
  engine.handleFrame(&stranger, three.data(), 3);
  EXPECT_FALSE(engine.hasActiveContact());
  engine.handleFrame(&stranger, nullptr, 0);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(TouchEngineFrames, FramesAfterAStopAreIgnored) {
  frame(pad, row(3));
  engine.stop();
  engine.handleFrame(multitouch.handle(pad), nullptr, 0);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  EXPECT_FALSE(engine.hasActiveContact());
}

TEST_F(TouchEngineFrames, ANullPointerAndACountBelowOneAreEmptyFrames) {
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    frame(pad, row(3));
    const Frame three = row(3);
    EXPECT_TRUE(multitouch.deliver(pad, three.data(), count));
    EXPECT_EQ(posted.take(), kMiddleClick) << count;
    time.advance(1);
  }
  frame(pad, row(3));
  EXPECT_TRUE(multitouch.deliver(pad, nullptr, 3));
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, ContactsThatDoNotTouchEndTheSession) {
  frame(pad, row(3));
  Frame leaving = row(3);
  for (MTTouch& contact : leaving) contact.stage = 6;
  frame(pad, leaving);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, FingersThatWereDownAtTheStartBeginNothing) {
  start();
  tap(pad, 3);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick) << "they all lifted once";
}

TEST_F(TouchEngineFrames, RestartingDropsARunningSession) {
  frame(pad, row(3));
  start();
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, SwitchingTheFrontmostApplicationAbandonsTheSession) {
  frame(pad, row(3));
  activate(kBrowser);
  frame(pad, row(3));
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, SwitchingBackDoesNotReviveTheSession) {
  frame(pad, row(3));
  activate(kBrowser);
  frame(pad, row(3));
  activate(kEditor);
  frame(pad, row(3));
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(TouchEngineFrames, ASwitchSeenOnlyAtTheEndAbandonsItToo) {
  frame(pad, row(3));
  activate(kBrowser);
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick) << "an empty frame makes the device ready";
}

TEST_F(TouchEngineFrames, ASwitchThereAndBackBetweenTwoFramesGoesUnnoticed) {
  frame(pad, row(3));
  activate(kBrowser);
  activate(kEditor);
  lift(pad);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, TurningTheSwitchOffAbandonsTheSession) {
  frame(pad, row(3));
  set("enabled", false);
  frame(pad, row(3));
  set("enabled", true);
  frame(pad, row(3));
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, WhileSwitchedOffNothingIsRecognisedButLiftingIsSeen) {
  set("enabled", false);
  tap(pad, 3);
  EXPECT_EQ(posted.take(), Lines{});
  set("enabled", true);
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, WithNobodyInFrontNothingIsRecognised) {
  workspace.activate(std::nullopt);
  tap(pad, 3);
  EXPECT_EQ(posted.take(), Lines{});
  frame(pad, row(3));
  activate(kEditor);
  frame(pad, row(3));
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{}) << "these fingers came down before";
}

TEST_F(TouchEngineFrames, IgnoredApplicationsGetNothing) {
  config.setIgnoredApps({kEditor});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), Lines{});
  config.setIgnoredApps({});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick);
}

TEST_F(TouchEngineFrames, ARuleAddedDuringASessionAbandonsIt) {
  frame(pad, row(3));
  config.setIgnoredApps({kEditor});
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{});
}

TEST_F(TouchEngineFrames, OurOwnWindowsGetTapsOnlyOverThePracticeTarget) {
  activate(kOwnApp);
  tap(pad, 3);
  EXPECT_EQ(posted.take(), Lines{});
  practice.set(Rect{500, 300, 100, 100});
  tap(pad, 3);
  EXPECT_EQ(posted.take(), kMiddleClick);
  EXPECT_EQ(outcomes(), Lines{"click"});
  time.advance(1);
  frame(pad, row(3));
  events.setPointer(Point{0, 0});
  lift(pad);
  EXPECT_EQ(posted.take(), Lines{}) << "the pointer left the target";
}

TEST_F(TouchEngineFrames, DevicesDoNotDisturbEachOther) {
  frame(pad, row(3));
  time.advance(0.05);
  frame(mouse, row(3));
  time.advance(0.05);
  lift(pad);
  EXPECT_EQ(posted.take(), kMiddleClick);
  time.advance(0.1);
  lift(mouse);
  EXPECT_EQ(posted.take(), kMiddleClick);
  EXPECT_EQ(outcomes(), (Lines{"click", "click"}));
}

// A frame that has to know who is in front asks who we are; an idle one does not.

class IdleFrames : public ::testing::Test, protected EngineKit {
 protected:
  class CountingWorkspace final : public Workspace {
   public:
    explicit CountingWorkspace(Workspace& workspace) : workspace_(workspace) {}
    [[nodiscard]] AppId ownBundleId() const override {
      ++asked;
      return workspace_.ownBundleId();
    }
    [[nodiscard]] AppId frontmostBundleId() override { return workspace_.frontmostBundleId(); }
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
      return workspace_.frontmostApplication();
    }
    [[nodiscard]] Observation observeActivations(
        std::function<void(const std::optional<RunningApplication>&)> activated) override {
      return workspace_.observeActivations(std::move(activated));
    }
    mutable int asked = 0;

   private:
    Workspace& workspace_;
  };

  IdleFrames() {
    tracker_.start();
    addDevices();
    EXPECT_TRUE(engine_.start());
  }
  int questionsOf(MTDevice device, const Frame& contacts, int frames = 1) {
    front_.asked = 0;
    for (int i = 0; i < frames; ++i) {
      engine_.handleFrame(device, contacts.data(), static_cast<std::ptrdiff_t>(contacts.size()));
    }
    return front_.asked;
  }
  CountingWorkspace front_{workspace};
  AppTracker tracker_{config, front_, events, practice, notifications};
  TouchEngine engine_{services(binding, tracker_)};
};

TEST_F(IdleFrames, CostNoMoreThanALookUp) {
  const MTDevice device = multitouch.handle(pad);
  EXPECT_GT(questionsOf(device, {}), 0) << "the first one makes the device ready";
  EXPECT_EQ(questionsOf(device, {}, 100), 0);
  EXPECT_GT(questionsOf(device, row(1)), 0);
  EXPECT_GT(questionsOf(device, {}), 0);
  EXPECT_EQ(questionsOf(device, {}, 100), 0);
}

TEST_F(IdleFrames, OfAnUnknownDeviceAskNothing) {
  int stranger = 0;
  EXPECT_EQ(questionsOf(&stranger, {}), 0);
}

// The library's callback may be called without a device.

MTFrameCallback capturedCallback = nullptr;

class CapturingLoader final : public LibraryLoader {
 public:
  explicit CapturingLoader(LibraryLoader& loader) : loader_(loader) {}
  [[nodiscard]] void* open(const char* path) override { return loader_.open(path); }
  [[nodiscard]] void* symbol(void* handle, const char* name) override {
    if (std::string_view(name) != "MTRegisterContactFrameCallback") {
      return loader_.symbol(handle, name);
    }
    const MTRegisterContactFrameCallbackFn capture = [](MTDevice, MTFrameCallback callback) {
      capturedCallback = callback;
      return std::int32_t{0};
    };
    return reinterpret_cast<void*>(capture);
  }
  [[nodiscard]] const char* multitouchLibraryPath() const override {
    return loader_.multitouchLibraryPath();
  }

 private:
  LibraryLoader& loader_;
};

TEST_F(TouchEngineStart, FramesWithoutADeviceOrAnEngineAreIgnored) {
  addDevices();
  const Frame three = row(3);
  {
    CapturingLoader loader(multitouch);
    MT capturing(loader);
    TouchEngine other(services(capturing, apps));
    EXPECT_FALSE(other.start()) << "no device registers";
    ASSERT_NE(capturedCallback, nullptr);
    capturedCallback(nullptr, three.data(), 3, 0, 0);
    EXPECT_FALSE(other.hasActiveContact());
  }
  capturedCallback(multitouch.handle(pad), three.data(), 3, 0, 0);
  EXPECT_FALSE(engine.hasActiveContact());
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
  said.take();
  engine.stop();
  EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_EQ(said.take(), Lines{"cancelled held middle click at (512.0, 384.5)"});
  EXPECT_EQ(multitouch.takeCalls(), (Lines{"stop pad", "unregister pad", "release pad",
                                           "stop mouse", "unregister mouse", "release mouse"}));
  engine.stop();
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(multitouch.takeCalls(), Lines{});
}

TEST_F(TouchEngineFrames, StartingReleasesAHeldConversionToo) {
  frame(pad, row(3));
  ASSERT_TRUE(engine.shouldConvertClick(Button::left));
  EXPECT_TRUE(engine.start());
  EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
}

TEST_F(TouchEngineFrames, AnEngineThatIsGoneReleasesAHeldConversion) {
  engine.stop();
  {
    TouchEngine other(services());
    EXPECT_TRUE(other.start());
    lift(pad);
    frame(pad, row(3));
    ASSERT_TRUE(other.shouldConvertClick(Button::left));
  }
  EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
}

// The pinch step.

class TouchEnginePinch : public EngineTest {
 protected:
  // Two fingers `apart` hundredths of the surface (millimetres, here) from each other.
  static Frame pair(float apart) {
    return {touch({.id = 1, .x = 0.5F - apart / 200}), touch({.id = 2, .x = 0.5F + apart / 200})};
  }
  void beginPinch(const char* device) {
    frame(device, pair(20));
    frame(device, pair(26));
  }
  Lines phases() {
    Lines result;
    for (const GestureEvent& event : posted.takeGestures()) {
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
  activate(kOwnApp);
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
  said.take();
  activate(kBrowser);
  frame(mouse, pair(28));
  EXPECT_EQ(phases(), Lines{}) << "the new application never saw the beginning";
  EXPECT_EQ(said.take(), Lines{"pinch cancelled"});
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
  const Lines keys = posted.take();
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
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(outcomes(), Lines{});
}

}  // namespace
}  // namespace velotap
