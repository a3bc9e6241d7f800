#include <gtest/gtest.h>

#include "device_mirror_fixture.hpp"

namespace velotap::test {
namespace {

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

}  // namespace
}  // namespace velotap::test
