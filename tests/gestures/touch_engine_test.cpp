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

}  // namespace
}  // namespace velotap
