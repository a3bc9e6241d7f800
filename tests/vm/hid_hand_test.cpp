#include "hid_hand.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <string_view>

namespace velotap::vm {
namespace {

class HidHandTest : public testing::Test {
 protected:
  std::string say(std::string_view line) { return hand.apply(parseLine(line).statement.value()); }

  HidHand hand{hidModel(HidKind::magicMouse2)};
};

TEST_F(HidHandTest, AFingerLandsStaysAndLeaves) {
  EXPECT_EQ(say("touch 3 10 20"), "");
  HidFrame frame = hand.takeFrame(7);
  EXPECT_EQ(frame.timestamp, 7U);
  ASSERT_EQ(frame.contacts.size(), 1U);
  EXPECT_EQ(frame.contacts[0].id, 3);
  EXPECT_EQ(frame.contacts[0].state, TouchState::start);
  EXPECT_EQ(hand.takeFrame(8).contacts[0].state, TouchState::drag);
  EXPECT_EQ(say("lift 3"), "");
  frame = hand.takeFrame(9);
  ASSERT_EQ(frame.contacts.size(), 1U);
  EXPECT_EQ(frame.contacts[0].state, TouchState::none);
  EXPECT_EQ(frame.contacts[0].major, 0);
  EXPECT_EQ(frame.contacts[0].x, 10);
  EXPECT_TRUE(hand.takeFrame(10).contacts.empty());
}

TEST_F(HidHandTest, WhatATouchDoesNotNameStaysUntilTheFingerIsNew) {
  const int resting = hidModel(HidKind::magicMouse2).finger.major;
  EXPECT_EQ(say("touch 1 0 0 major=40"), "");
  EXPECT_EQ(hand.takeFrame(0).contacts[0].major, 40);
  EXPECT_EQ(say("touch 1 5 5"), "");
  EXPECT_EQ(hand.takeFrame(0).contacts[0].major, 40);
  EXPECT_EQ(say("lift 1"), "");
  static_cast<void>(hand.takeFrame(0));
  EXPECT_EQ(say("touch 1 5 5"), "");
  EXPECT_EQ(hand.takeFrame(0).contacts[0].major, resting);
}

TEST_F(HidHandTest, MotionAndWheelHappenOnceButtonsStay) {
  EXPECT_EQ(say("motion 4 -5"), "");
  EXPECT_EQ(say("wheel 1"), "");
  EXPECT_EQ(say("button 2"), "");
  HidFrame frame = hand.takeFrame(0);
  EXPECT_EQ(frame.dx, 4);
  EXPECT_EQ(frame.dy, -5);
  EXPECT_EQ(frame.wheel, 1);
  EXPECT_EQ(frame.buttons, 2);
  frame = hand.takeFrame(0);
  EXPECT_EQ(frame.dx, 0);
  EXPECT_EQ(frame.wheel, 0);
  EXPECT_EQ(frame.buttons, 2);
}

TEST_F(HidHandTest, MovesAreRefusedAsAWhole) {
  EXPECT_EQ(say("touch 1 0 0"), "");
  EXPECT_EQ(say("touch 2 2000 0"), "");
  EXPECT_EQ(hand.moveAll(47, 0), "");
  EXPECT_NE(hand.moveAll(1, 0), "");
  const HidFrame frame = hand.takeFrame(0);
  EXPECT_EQ(frame.contacts[0].x, 47);
  EXPECT_EQ(frame.contacts[1].x, 2047);
}

TEST_F(HidHandTest, OnlyFingersThatAreDownMoveOrLift) {
  EXPECT_EQ(say("move 1 1 1"), "contact 1 is not down");
  EXPECT_EQ(say("lift 1"), "contact 1 is not down");
  EXPECT_EQ(say("lift 16"), "contact 16 is not down");
  EXPECT_EQ(say("touch 1 0 0"), "");
  static_cast<void>(hand.takeFrame(0));
  EXPECT_EQ(say("lift 1"), "");
  EXPECT_EQ(say("lift 1"), "contact 1 is not down");
  EXPECT_EQ(say("touch 1 0 0"), "send a frame between lift and touch");
}

TEST_F(HidHandTest, AFingerThatNoReportShowedLeavesNoTrace) {
  EXPECT_EQ(say("touch 1 0 0"), "");
  EXPECT_EQ(say("lift 1"), "");
  EXPECT_TRUE(hand.takeFrame(0).contacts.empty());
}

TEST_F(HidHandTest, AReportHoldsFifteenContacts) {
  for (int id = 0; id < 15; ++id) {
    EXPECT_EQ(say("touch " + std::to_string(id) + " 0 0"), "");
  }
  EXPECT_EQ(say("touch 15 0 0"), "too many contacts");
  EXPECT_EQ(hand.takeFrame(0).contacts.size(), 15U);
}

TEST_F(HidHandTest, TremorStaysInItsBoundsAndRepeats) {
  HidHand other(hidModel(HidKind::magicMouse2));
  bool strayed = false;
  for (HidHand* each : {&hand, &other}) {
    EXPECT_EQ(each->apply(parseLine("touch 1 2046 0").statement.value()), "");
    EXPECT_EQ(each->apply(parseLine("tremor 3").statement.value()), "");
  }
  for (int i = 0; i < 200; ++i) {
    const HidContact contact = hand.takeFrame(0).contacts[0];
    EXPECT_EQ(contact, other.takeFrame(0).contacts[0]);
    EXPECT_GE(contact.x, 2043);
    EXPECT_LE(contact.x, 2047);
    EXPECT_LE(std::abs(contact.y), 3);
    strayed = strayed || contact.y != 0;
  }
  EXPECT_TRUE(strayed);
}

TEST(HidHand, APlainMouseHasNoSurface) {
  HidHand hand(hidModel(HidKind::plainMouse));
  EXPECT_EQ(hand.apply(parseLine("touch 1 0 0").statement.value()),
            "plain-mouse has no touch surface");
}

}  // namespace
}  // namespace velotap::vm
