#include "adapters/linux/gesture/gesture_output.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "fake_pad.hpp"

namespace velotap {
namespace {

using enum GestureKind;
using enum GesturePhase;

class GestureOutputTest : public testing::Test {
 protected:
  void send(GestureKind kind, GesturePhase phase, double value = 0) {
    output->handle({.kind = kind, .phase = phase, .value = value}, now);
  }
  void pass(double seconds) {
    const double end = now + seconds;
    output->turn(now);
    while (output->deadline() && *output->deadline() <= end) {
      now = std::max(now, *output->deadline());
      output->turn(now);
      ASSERT_LT(++turns, 100'000);
    }
    now = end;
  }
  [[nodiscard]] GestureWays ways() {
    return {.padUsable = [this] { return usable; },
            .writeCombined =
                [this](std::span<const input_event> frame) {
                  EXPECT_EQ(frame.back().type, EV_SYN);
                  EXPECT_EQ(std::ranges::count(frame, EV_SYN, &input_event::type), 1);
                  for (const auto& event : frame) {
                    if (event.type == EV_KEY && event.code == KEY_LEFTCTRL) control = event.value;
                    if (event.code == REL_WHEEL_HI_RES && event.type == EV_REL) {
                      EXPECT_EQ(control, 1) << "wheel without Control";
                      wheel += event.value;
                    }
                  }
                  return !combinedLost;
                }};
  }

  double now = 50;
  int turns = 0;
  bool usable = true;
  bool combinedLost = false;
  int control = 0;
  int wheel = 0;
  FakePad pad;
  LinesKept log;
  std::optional<GestureOutput> output{std::in_place, pad, ways(), log};
};

TEST_F(GestureOutputTest, nothingIsCreatedBeforeTheFirstGesture) {
  pass(10);
  EXPECT_EQ(pad.creations, 0);
  EXPECT_FALSE(output->deadline());
}

TEST_F(GestureOutputTest, anAnnouncedGestureFindsThePadReady) {
  pad.appearing = 0.9;
  output->prepare(now);
  output->prepare(now);
  pass(1);
  EXPECT_TRUE(pad.exists);
  EXPECT_FALSE(output->deadline()) << "nothing to wait for once it is ready";
  EXPECT_EQ(pad.frames, 0);
  send(magnify, began);
  send(magnify, changed, 0.1);
  pass(0.05);
  EXPECT_EQ(pad.contactsDown(), 2);
  EXPECT_TRUE(log.lines.empty());
}

TEST_F(GestureOutputTest, nothingIsMadeReadyWhereTheDesktopIgnoresTouchpads) {
  usable = false;
  output->prepare(now);
  EXPECT_EQ(pad.creations, 0);
  EXPECT_TRUE(log.lines.empty());
}

TEST_F(GestureOutputTest, whatCannotBeMadeReadyIsSaidOnce) {
  pad.refusal = EACCES;
  output->prepare(now);
  send(magnify, began);
  send(magnify, ended);
  EXPECT_EQ(log.lines.size(), 1U);
}

TEST_F(GestureOutputTest, aPinchIsPlayedOnThePad) {
  send(magnify, began);
  send(magnify, changed, 0.1);
  pass(0.05);
  EXPECT_EQ(pad.contactsDown(), 2);
  send(magnify, ended);
  pass(1);
  EXPECT_EQ(pad.contactsDown(), 0);
  EXPECT_TRUE(pad.exists);
  EXPECT_EQ(pad.destructions, 0);
  EXPECT_EQ(wheel, 0);
  EXPECT_FALSE(output->deadline());
}

TEST_F(GestureOutputTest, nothingIsWrittenBeforeThePadIsReady) {
  pad.appearing = 0.9;
  send(magnify, began);
  for (int i = 0; i < 8; ++i) {
    send(magnify, changed, 0.01);
    pass(0.1);
  }
  EXPECT_EQ(pad.frames, 0);
  pass(0.2);
  EXPECT_GT(pad.frames, 2);
  EXPECT_EQ(pad.contactsDown(), 2);
}

TEST_F(GestureOutputTest, aGestureThatIsOverWhenThePadAppearsIsNotPlayed) {
  pad.appearing = 0.9;
  send(magnify, began);
  send(magnify, changed, 0.1);
  pass(0.1);
  send(magnify, ended);
  pass(2);
  EXPECT_EQ(pad.frames, 0);
  EXPECT_FALSE(output->deadline());
}

TEST_F(GestureOutputTest, aPadThatTheDesktopIgnoresIsReplacedByTheWheel) {
  usable = false;
  send(magnify, began);
  send(magnify, changed, kScaleOfNotch - 1);
  EXPECT_EQ(wheel, 120);
  EXPECT_EQ(control, 1);
  send(magnify, ended);
  EXPECT_EQ(control, 0);
  EXPECT_EQ(pad.creations, 0);
}

TEST_F(GestureOutputTest, theWayOutIsChosenAtEachBeginning) {
  usable = false;
  send(magnify, began);
  send(magnify, changed, 0.1);
  usable = true;
  send(magnify, changed, 0.1);
  EXPECT_EQ(pad.creations, 0) << "not in the middle";
  send(magnify, began);
  EXPECT_EQ(control, 0);
  EXPECT_EQ(pad.creations, 1);
  pass(0.1);
  EXPECT_EQ(pad.contactsDown(), 2);
  usable = false;
  send(magnify, began);
  pass(1);
  EXPECT_EQ(pad.contactsDown(), 0);
}

TEST_F(GestureOutputTest, aRefusedDeviceIsReplacedByTheWheelAndSaidOnce) {
  pad.refusal = EACCES;
  for (int i = 0; i < 3; ++i) {
    send(magnify, began);
    send(magnify, changed, 0.1);
    send(magnify, ended);
  }
  EXPECT_GT(wheel, 300);
  EXPECT_EQ(control, 0);
  ASSERT_EQ(log.lines.size(), 1U);
  EXPECT_EQ(log.lines[0], "no virtual touchpad (Permission denied): zooming with the wheel");
}

TEST_F(GestureOutputTest, aDeviceThatIsGrantedLaterIsUsed) {
  pad.refusal = EACCES;
  send(magnify, began);
  send(magnify, ended);
  pad.refusal = 0;
  send(magnify, began);
  pass(0.1);
  EXPECT_EQ(pad.contactsDown(), 2);
}

TEST_F(GestureOutputTest, rotationWithoutAPadIsSaidOnceToBeImpossible) {
  usable = false;
  for (int i = 0; i < 3; ++i) {
    send(rotate, began);
    send(rotate, changed, 10);
    send(rotate, ended);
  }
  EXPECT_EQ(wheel, 0);
  EXPECT_EQ(control, 0);
  EXPECT_EQ(std::ranges::count(log.lines, "rotation is not possible without the virtual touchpad"),
            1);
}

TEST_F(GestureOutputTest, aLostPadIsDroppedAndMadeAnewForTheNextGesture) {
  send(magnify, began);
  pass(0.1);
  pad.lost = true;
  send(magnify, changed, 0.1);
  pass(0.1);
  EXPECT_FALSE(pad.exists);
  EXPECT_FALSE(output->deadline());
  send(magnify, changed, 0.1);
  pass(0.1);
  EXPECT_EQ(pad.creations, 1) << "not for the rest of the lost gesture";
  pad.lost = false;
  send(magnify, ended);
  send(magnify, began);
  pass(0.1);
  EXPECT_EQ(pad.creations, 2);
  EXPECT_EQ(pad.contactsDown(), 2);
}

TEST_F(GestureOutputTest, eventsBeforeAnyBeginningAreIgnored) {
  send(magnify, changed, 0.1);
  send(magnify, ended);
  send(rotate, cancelled);
  pass(1);
  EXPECT_EQ(pad.creations, 0);
  EXPECT_EQ(wheel, 0);
}

TEST_F(GestureOutputTest, cancellingGivesUpWhatIsInProgress) {
  send(rotate, began);
  pass(0.1);
  output->cancel(now);
  pass(0.02);
  EXPECT_EQ(pad.contactsDown(), 1);
  pass(1);
  EXPECT_EQ(pad.contactsDown(), 0);
}

TEST_F(GestureOutputTest, destroyingLiftsAndReleasesEverything) {
  send(magnify, began);
  pass(0.1);
  output.reset();
  EXPECT_EQ(pad.contactsDown(), 0);
  EXPECT_FALSE(pad.exists);

  output.emplace(pad, ways(), log);
  usable = false;
  send(magnify, began);
  send(magnify, changed, 0.5);
  EXPECT_EQ(control, 1);
  output.reset();
  EXPECT_EQ(control, 0);
}

TEST_F(GestureOutputTest, controlComesUpThoughTheWheelCannotBeWritten) {
  usable = false;
  combinedLost = true;
  send(magnify, began);
  send(magnify, changed, 0.5);
  send(magnify, ended);
  EXPECT_EQ(control, 0);
}

TEST_F(GestureOutputTest, controlComesUpWhenTheEndNeverComes) {
  usable = false;
  send(magnify, began);
  send(magnify, changed, 0.5);
  pass(kForgottenAfter - 0.001);
  EXPECT_EQ(control, 1);
  pass(0.002);
  EXPECT_EQ(control, 0);
}

}  // namespace
}  // namespace velotap
