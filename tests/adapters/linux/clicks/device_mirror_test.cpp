#include "adapters/linux/clicks/device_mirror.hpp"

#include <gtest/gtest.h>

#include "device_mirror_fixture.hpp"

namespace velotap::test {
namespace {

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
