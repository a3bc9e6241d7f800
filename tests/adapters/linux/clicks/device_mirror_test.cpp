#include "adapters/linux/clicks/device_mirror.hpp"

#include <gtest/gtest.h>

#include "../evdev/event_maker.hpp"
#include "fake_hardware.hpp"
#include "support/virtual_time.hpp"

namespace velotap::test {
namespace {

using Want = DeviceMirror::Want;

class DeviceMirrorTest : public testing::Test {
 protected:
  explicit DeviceMirrorTest(EvdevDevice device = magicMouse()) {
    session = taps.install(TapLocation::session, 0xDE,
                           {.event =
                                [this](TappedEvent& event) {
                                  heard += std::to_string(static_cast<int>(event.type())) + " ";
                                  if (inTap) inTap();
                                  if (!converts || event.type() != MouseEventType::leftDown) {
                                    return answer;
                                  }
                                  event.setType(MouseEventType::otherDown);
                                  event.setButton(kMiddleButton);
                                  return answer;
                                },
                            .disabled =
                                [this](TapDisabled) {
                                  heard += "off ";
                                  session->enable(true);
                                }});
    session->enable(true);
    mirror = std::make_shared<DeviceMirror>(
        std::make_unique<FakeHardware>(kernel, "/dev/input/event3", std::move(device)),
        DeviceMirror::Links{
            .taps = taps,
            .queue = queue,
            .clock = clock,
            .middle = [this](bool down) { pointer += down ? "+" : "-"; },
            .changed = [](const DeviceMirror&) {},
            .lost = [this](const DeviceMirror&, GrabTrouble trouble) { lost.push_back(trouble); }});
  }

  [[nodiscard]] GrabState state() const { return mirror->status().state; }
  void turns(int count) {
    for (int i = 0; i < count; ++i) mirror->turn();
  }
  void grab() {
    mirror->want(Want::yes, 2);
    for (int i = 0; i < 10 && state() != GrabState::grabbed; ++i) mirror->turn();
    ASSERT_EQ(state(), GrabState::grabbed);
    kernel->take();
  }
  void send(const std::vector<input_event>& events) {
    kernel->send(events);
    mirror->turn();
  }
  void press(std::uint16_t code) { send({event(EV_KEY, code, 1), report()}); }
  void release(std::uint16_t code) { send({event(EV_KEY, code, 0), report()}); }

  ExactClock clock;
  VirtualQueue queue{clock};
  TapChain taps;
  std::shared_ptr<FakeKernel> kernel = std::make_shared<FakeKernel>(clock);
  std::shared_ptr<DeviceMirror> mirror;
  std::unique_ptr<InstalledTap> session;
  std::function<void()> inTap;
  std::string heard;
  std::string pointer;
  std::vector<GrabTrouble> lost;
  bool converts = false;
  TapAnswer answer = TapAnswer::pass;
};

TEST_F(DeviceMirrorTest, nothingIsTouchedBeforeItIsWanted) {
  turns(3);
  EXPECT_EQ(state(), GrabState::resting);
  EXPECT_FALSE(kernel->opened);
  EXPECT_EQ(kernel->mirrors, 0);
}

TEST_F(DeviceMirrorTest, theMirrorIsTakenUpBeforeTheDeviceIsTaken) {
  mirror->want(Want::yes, 2);
  mirror->turn();
  EXPECT_EQ(state(), GrabState::appearing);
  mirror->turn();
  EXPECT_EQ(state(), GrabState::settling);
  const double before = clock.uptime();
  turns(2);
  EXPECT_EQ(state(), GrabState::waiting);
  EXPECT_GE(clock.uptime() - before, DeviceMirror::kSettle - 1e-9);
  EXPECT_FALSE(kernel->grabbed);
  mirror->turn();
  EXPECT_EQ(state(), GrabState::grabbed);
  EXPECT_TRUE(kernel->grabbed);
  EXPECT_TRUE(kernel->guarded);
}

TEST_F(DeviceMirrorTest, withoutWordOfUdevTheMirrorCountsAsKnownAfterAWhile) {
  kernel->mirrorKnown = false;
  mirror->want(Want::yes, 2);
  mirror->turn();
  const double before = clock.uptime();
  turns(2);
  EXPECT_EQ(state(), GrabState::settling);
  EXPECT_GE(clock.uptime() - before, DeviceMirror::kMirrorKnownWithin - 1e-9);
}

TEST_F(DeviceMirrorTest, isNotTakenWhileAButtonIsDown) {
  kernel->buttons = {BTN_LEFT};
  mirror->want(Want::yes, 2);
  turns(8);
  EXPECT_EQ(state(), GrabState::waiting);
  EXPECT_EQ(kernel->grabs, 0);
  release(BTN_LEFT);
  mirror->turn();
  EXPECT_EQ(state(), GrabState::grabbed);
}

TEST_F(DeviceMirrorTest, aButtonThatGoesDownDuringTheGrabUndoesIt) {
  kernel->onGrab = [this] { kernel->buttons = {BTN_LEFT}; };
  mirror->want(Want::yes, 2);
  turns(6);
  EXPECT_EQ(state(), GrabState::waiting);
  EXPECT_FALSE(kernel->grabbed);
  EXPECT_EQ(kernel->take(), "");
  kernel->onGrab = nullptr;
  release(BTN_LEFT);
  mirror->turn();
  EXPECT_EQ(state(), GrabState::grabbed);
}

TEST_F(DeviceMirrorTest, fingersOnAMouseDoNotMatterToTheGrab) {
  kernel->slots = {{.id = 1}};
  grab();
}

TEST_F(DeviceMirrorTest, whatWaitedBeforeTheGrabIsNotPassedAgain) {
  kernel->send({event(EV_REL, REL_X, 1), report()});
  grab();
  EXPECT_EQ(kernel->take(), "");
}

TEST_F(DeviceMirrorTest, aDeviceThatAnotherProgramHoldsGetsNoMirror) {
  kernel->grabError = EBUSY;
  mirror->want(Want::yes, 2);
  turns(2);
  EXPECT_EQ(state(), GrabState::refused);
  EXPECT_EQ(mirror->status().trouble, GrabTrouble::device);
  EXPECT_EQ(mirror->status().error, EBUSY);
  EXPECT_EQ(kernel->mirrors, 0);
  EXPECT_FALSE(kernel->opened);
  // Somebody has reason to ask again.
  kernel->grabError = 0;
  mirror->want(Want::yes, 2);
  turns(8);
  EXPECT_EQ(state(), GrabState::grabbed);
}

TEST_F(DeviceMirrorTest, aDeviceThatIsTakenAtTheLastMomentLosesItsMirrorAgain) {
  kernel->onGrab = [this] { kernel->grabError = EBUSY; };
  mirror->want(Want::yes, 2);
  turns(5);
  EXPECT_EQ(state(), GrabState::refused);
  EXPECT_EQ(kernel->mirrors, 1);
  EXPECT_FALSE(kernel->mirrored);
  EXPECT_FALSE(kernel->guarded);
}

TEST_F(DeviceMirrorTest, aHeldDeviceIsTriedAgainAfterGrowingPausesThatEnd) {
  kernel->grabError = EBUSY;
  mirror->want(Want::yes, 2);
  mirror->turn();
  std::vector<double> tries;
  double last = clock.uptime();
  for (int i = 0; i < 100; ++i) {
    const int before = kernel->opens;
    mirror->turn();
    if (kernel->opens == before) continue;
    tries.push_back(clock.uptime() - last);
    last = clock.uptime();
  }
  ASSERT_EQ(tries.size(), static_cast<std::size_t>(DeviceMirror::kMostRetries));
  for (std::size_t i = 0; i < tries.size(); ++i) {
    EXPECT_NEAR(tries[i], DeviceMirror::kFirstPause * static_cast<double>(1 << i), 1e-9) << i;
  }
  // From then on nothing but somebody's asking ends the wait.
  EXPECT_NEAR(clock.uptime(), last, 1e-9);
  mirror->want(Want::yes, 2);
  turns(3);
  EXPECT_GT(clock.uptime(), last) << "the pauses begin anew";
}

TEST_F(DeviceMirrorTest, aHeldDeviceThatIsLetGoIsTakenAfterThePause) {
  kernel->grabError = EBUSY;
  mirror->want(Want::yes, 2);
  turns(4);
  kernel->grabError = 0;
  turns(8);
  EXPECT_EQ(state(), GrabState::grabbed);
}

TEST_F(DeviceMirrorTest, aHeldDeviceThatIsNoLongerWantedIsNotTriedAgain) {
  kernel->grabError = EBUSY;
  mirror->want(Want::yes, 2);
  turns(2);
  mirror->want(Want::no, 2);
  const int before = kernel->opens;
  turns(30);
  EXPECT_EQ(state(), GrabState::resting);
  EXPECT_EQ(kernel->opens, before);
}

TEST_F(DeviceMirrorTest, whatIsRefusedForAnotherReasonIsNotTriedAgain) {
  kernel->grabError = EINVAL;
  mirror->want(Want::yes, 2);
  turns(30);
  EXPECT_EQ(state(), GrabState::refused);
  EXPECT_EQ(kernel->opens, 1);
}

TEST_F(DeviceMirrorTest, theGuardIsThereBeforeTheGrab) {
  grab();
  EXPECT_FALSE(kernel->grabbedUnguarded);
}

TEST_F(DeviceMirrorTest, withoutAGuardNothingIsTaken) {
  kernel->guardError = EAGAIN;
  mirror->want(Want::yes, 2);
  turns(20);
  EXPECT_EQ(state(), GrabState::refused);
  EXPECT_EQ(mirror->status().trouble, GrabTrouble::guard);
  EXPECT_EQ(mirror->status().error, EAGAIN);
  EXPECT_EQ(kernel->grabs, 0);
  EXPECT_FALSE(kernel->mirrored);
  EXPECT_FALSE(kernel->opened);
  kernel->guardError = 0;
  mirror->want(Want::yes, 2);
  turns(8);
  EXPECT_EQ(state(), GrabState::grabbed);
}

TEST_F(DeviceMirrorTest, aLostGuardGivesTheDeviceBackAndIsHadAnewAFewTimes) {
  converts = true;
  grab();
  press(BTN_LEFT);
  queue.runDue();
  EXPECT_EQ(pointer, "+");
  kernel->buttons.clear();
  for (int i = 1; i <= DeviceMirror::kMostLosses; ++i) {
    kernel->guardLost = true;
    mirror->turn();
    EXPECT_EQ(state(), GrabState::resting) << i;
    EXPECT_FALSE(kernel->grabbed);
    EXPECT_EQ(pointer, "+-") << "nothing stays down";
    for (int n = 0; n < 10 && state() != GrabState::grabbed; ++n) mirror->turn();
    EXPECT_EQ(state(), GrabState::grabbed);
  }
  kernel->guardLost = true;
  mirror->turn();
  EXPECT_EQ(state(), GrabState::refused);
  EXPECT_EQ(mirror->status().trouble, GrabTrouble::guard);
  EXPECT_FALSE(kernel->grabbed);
  queue.runDue();
  EXPECT_EQ(lost, std::vector(DeviceMirror::kMostLosses, GrabTrouble::guard));
}

TEST_F(DeviceMirrorTest, lossesThatAreFarApartDoNotAddUp) {
  grab();
  for (int i = 1; i <= 2 * DeviceMirror::kMostLosses; ++i) {
    clock.advance(DeviceMirror::kHeldWell);
    kernel->guardLost = true;
    mirror->turn();
    for (int n = 0; n < 10 && state() != GrabState::grabbed; ++n) mirror->turn();
    ASSERT_EQ(state(), GrabState::grabbed) << i;
  }
}

TEST_F(DeviceMirrorTest, withoutAMirrorNothingIsTaken) {
  kernel->mirrorError = EACCES;
  mirror->want(Want::yes, 2);
  turns(5);
  EXPECT_EQ(state(), GrabState::refused);
  EXPECT_EQ(mirror->status().trouble, GrabTrouble::mirror);
  EXPECT_EQ(mirror->status().error, EACCES);
  EXPECT_EQ(kernel->grabs, 0);
  mirror->want(Want::no, 2);
  turns(2);
  EXPECT_EQ(state(), GrabState::resting);
}

TEST_F(DeviceMirrorTest, motionPassesWithoutTheMainThread) {
  grab();
  send({event(EV_REL, REL_X, 1), report()});
  EXPECT_EQ(kernel->take(), "m");
  EXPECT_EQ(kernel->fed, 0U) << "says nothing about contacts";
  send({event(EV_REL, REL_X, 1), event(EV_ABS, ABS_MT_POSITION_X, 5), report()});
  EXPECT_EQ(kernel->fed, 3U);
}

TEST_F(DeviceMirrorTest, aClickWaitsForTheTapsAndMotionDoesNotWaitForIt) {
  grab();
  press(BTN_LEFT);
  EXPECT_EQ(kernel->take(), "");
  send({event(EV_REL, REL_X, 1), report()});
  EXPECT_EQ(kernel->take(), "m");
  queue.runDue();
  EXPECT_EQ(kernel->take(), "+272");
  release(BTN_LEFT);
  EXPECT_EQ(kernel->take(), "-272");
  queue.runDue();
  EXPECT_EQ(heard, "1 2 ");
}

TEST_F(DeviceMirrorTest, aConvertedClickLeavesByThePointer) {
  converts = true;
  grab();
  press(BTN_LEFT);
  queue.runDue();
  release(BTN_LEFT);
  queue.runDue();
  EXPECT_EQ(pointer, "+-");
  EXPECT_EQ(kernel->take(), "");
}

TEST_F(DeviceMirrorTest, aReleaseBehindAnUnansweredPressKeepsItsPlace) {
  converts = true;
  grab();
  press(BTN_LEFT);
  release(BTN_LEFT);
  EXPECT_EQ(pointer, "");
  queue.runDue();
  EXPECT_EQ(pointer, "+-");
  EXPECT_EQ(heard, "1 2 ");
}

TEST_F(DeviceMirrorTest, aDroppedClickLeavesNothing) {
  answer = TapAnswer::drop;
  grab();
  press(BTN_LEFT);
  queue.runDue();
  release(BTN_LEFT);
  queue.runDue();
  EXPECT_EQ(kernel->take(), "");
  EXPECT_EQ(pointer, "");
}

TEST_F(DeviceMirrorTest, aReleaseIsNotDroppedWhoeverSaysSo) {
  grab();
  press(BTN_LEFT);
  queue.runDue();
  answer = TapAnswer::drop;
  release(BTN_LEFT);
  queue.runDue();
  EXPECT_EQ(kernel->take(), "+272-272");
}

TEST_F(DeviceMirrorTest, withoutTapsClicksPassAtOnce) {
  grab();
  session->enable(false);
  press(BTN_LEFT);
  EXPECT_EQ(kernel->take(), "+272");
}

TEST_F(DeviceMirrorTest, anUnansweredClickPassesUnchangedAndIsReported) {
  converts = true;
  grab();
  const double before = clock.uptime();
  press(BTN_LEFT);
  mirror->turn();
  EXPECT_GE(clock.uptime() - before, DeviceMirror::kAnswerWithin - 1e-9);
  EXPECT_EQ(kernel->take(), "+272");
  // As long as the main thread is stuck nothing more waits for it.
  press(BTN_RIGHT);
  EXPECT_EQ(kernel->take(), "+273");
  release(BTN_LEFT);
  release(BTN_RIGHT);
  EXPECT_EQ(kernel->take(), "-272-273");
  queue.runDue();
  EXPECT_EQ(heard, "off 2 4 ");
  EXPECT_EQ(pointer, "");
  // Enabled again, the taps are asked again.
  press(BTN_LEFT);
  queue.runDue();
  EXPECT_EQ(pointer, "+");
}

TEST_F(DeviceMirrorTest, anAnswerThatComesTooLateChangesNothing) {
  converts = true;
  grab();
  press(BTN_LEFT);
  inTap = [this] {
    inTap = nullptr;
    mirror->turn();  // the time runs out while the callback runs
  };
  queue.runDue();
  EXPECT_EQ(kernel->take(), "+272");
  EXPECT_EQ(pointer, "");
  EXPECT_EQ(heard, "1 off ");
}

TEST_F(DeviceMirrorTest, aClickIsAnsweredUpToItsLimit) {
  converts = true;
  grab();
  press(BTN_LEFT);
  clock.advance(DeviceMirror::kAnswerWithin - 0.001);
  queue.runDue();
  EXPECT_EQ(pointer, "+");
}

TEST_F(DeviceMirrorTest, switchedOffWhileHeldWaitsForTheRelease) {
  converts = true;
  grab();
  press(BTN_LEFT);
  queue.runDue();
  session->enable(false);
  mirror->want(Want::no, 2);
  turns(2);
  EXPECT_EQ(state(), GrabState::leaving);
  EXPECT_TRUE(kernel->grabbed);
  release(BTN_LEFT);
  EXPECT_EQ(pointer, "+-");
  mirror->turn();
  EXPECT_EQ(state(), GrabState::resting);
  EXPECT_FALSE(kernel->grabbed);
  EXPECT_FALSE(kernel->guarded);
  EXPECT_FALSE(kernel->mirrored);
  EXPECT_FALSE(kernel->opened);
}

TEST_F(DeviceMirrorTest, wantedAgainWhileLeavingStays) {
  grab();
  press(BTN_LEFT);
  queue.runDue();
  mirror->want(Want::no, 2);
  mirror->turn();
  mirror->want(Want::yes, 2);
  mirror->turn();
  EXPECT_EQ(state(), GrabState::grabbed);
  EXPECT_EQ(kernel->grabs, 1);
}

TEST_F(DeviceMirrorTest, givenBackAtOnceReleasesEverything) {
  converts = true;
  grab();
  press(BTN_LEFT);
  press(BTN_RIGHT);
  queue.runDue();
  EXPECT_EQ(kernel->take(), "+273");
  mirror->want(Want::noAtOnce, 2);
  mirror->turn();
  EXPECT_EQ(kernel->take(), "-273");
  EXPECT_EQ(pointer, "+-");
  EXPECT_EQ(state(), GrabState::resting);
  EXPECT_FALSE(kernel->grabbed);
  // The taps hear of the releases, so that they do not take the buttons for held.
  queue.runDue();
  EXPECT_EQ(heard, "1 3 2 4 ");
}

TEST_F(DeviceMirrorTest, givenBackAtOnceForgetsAnUnansweredPress) {
  converts = true;
  grab();
  press(BTN_LEFT);
  mirror->want(Want::noAtOnce, 2);
  mirror->turn();
  queue.runDue();
  EXPECT_EQ(pointer, "");
  EXPECT_EQ(kernel->take(), "");
}

TEST_F(DeviceMirrorTest, unpluggedWhileHeldReleasesThePointersButton) {
  converts = true;
  grab();
  press(BTN_LEFT);
  queue.runDue();
  kernel->unplug();
  EXPECT_TRUE(mirror->turn());
  EXPECT_EQ(pointer, "+-");
  EXPECT_EQ(state(), GrabState::gone);
  EXPECT_FALSE(kernel->mirrored);
  EXPECT_FALSE(mirror->turn());
}

TEST_F(DeviceMirrorTest, unpluggedWithTheReleaseUnreadReleasesItToo) {
  converts = true;
  grab();
  press(BTN_LEFT);
  queue.runDue();
  kernel->send({event(EV_KEY, BTN_LEFT, 0), report()});
  kernel->unplug();
  mirror->turn();
  EXPECT_EQ(pointer, "+-");
}

TEST_F(DeviceMirrorTest, aLostReleaseIsFoundOut) {
  converts = true;
  grab();
  press(BTN_LEFT);
  queue.runDue();
  kernel->buttons.clear();
  send({event(EV_SYN, SYN_DROPPED, 0), report()});
  EXPECT_EQ(pointer, "+-");
}

TEST_F(DeviceMirrorTest, aLostPressIsFoundOut) {
  grab();
  kernel->buttons = {BTN_RIGHT};
  send({event(EV_SYN, SYN_DROPPED, 0), report()});
  queue.runDue();
  EXPECT_EQ(kernel->take(), "+273");
}

TEST_F(DeviceMirrorTest, aLostMirrorGivesTheDeviceBackAndIsMadeAnewAFewTimes) {
  grab();
  for (int i = 1; i <= DeviceMirror::kMostLosses; ++i) {
    kernel->mirrorBroken = true;
    send({event(EV_REL, REL_X, 1), report()});
    EXPECT_EQ(state(), GrabState::resting) << i;
    EXPECT_FALSE(kernel->grabbed);
    kernel->mirrorBroken = false;
    for (int n = 0; n < 10 && state() != GrabState::grabbed; ++n) mirror->turn();
    EXPECT_EQ(state(), GrabState::grabbed);
  }
  kernel->mirrorBroken = true;
  send({event(EV_REL, REL_X, 1), report()});
  EXPECT_EQ(state(), GrabState::refused);
  EXPECT_EQ(mirror->status().error, EIO);
}

TEST_F(DeviceMirrorTest, endsWithEverythingGivenBack) {
  converts = true;
  kernel->block = true;
  mirror->want(Want::yes, 2);
  mirror->start();
  {
    std::unique_lock guard(kernel->lock);
    while (!kernel->guarded) {
      kernel->moved.wait_for(guard, std::chrono::milliseconds(1));
    }
  }
  mirror->stop();
  EXPECT_FALSE(kernel->grabbed);
  EXPECT_FALSE(kernel->mirrored);
  EXPECT_FALSE(kernel->guarded);
}

TEST_F(DeviceMirrorTest, aThousandGrabsLeaveNothingBehind) {
  converts = true;
  for (int i = 0; i < 1000; ++i) {
    grab();
    press(BTN_LEFT);
    queue.runDue();
    mirror->want(i % 2 == 0 ? Want::noAtOnce : Want::no, 2);
    mirror->turn();
    release(BTN_LEFT);
    turns(3);
    ASSERT_EQ(state(), GrabState::resting) << i;
    queue.runDue();
    ASSERT_EQ(pointer, "+-") << i;
    pointer.clear();
    ASSERT_FALSE(kernel->mirrored);
  }
  EXPECT_EQ(kernel->grabs, 1000);
}

class TrackpadMirrorTest : public DeviceMirrorTest {
 protected:
  TrackpadMirrorTest() : DeviceMirrorTest(magicTrackpad()) {}
};

TEST_F(TrackpadMirrorTest, isTakenAndGivenBackOnlyUntouched) {
  kernel->slots = {{.id = 1}};
  mirror->want(Want::yes, 2);
  turns(8);
  EXPECT_EQ(state(), GrabState::waiting);
  kernel->slots.clear();
  send({report()});
  mirror->turn();
  EXPECT_EQ(state(), GrabState::grabbed);
  kernel->slots = {{.id = 2}};
  mirror->want(Want::no, 2);
  turns(2);
  EXPECT_EQ(state(), GrabState::leaving);
  kernel->slots.clear();
  send({report()});
  mirror->turn();
  EXPECT_EQ(state(), GrabState::resting);
}

}  // namespace
}  // namespace velotap::test
