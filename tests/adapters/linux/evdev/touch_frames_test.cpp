#include "adapters/linux/evdev/touch_frames.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "event_maker.hpp"

namespace velotap::test {
namespace {

RawContact finger(std::int32_t id, int x = 128, int y = 54) {
  return {.id = id, .x = x, .y = y, .major = 400, .minor = 300, .pressure = 41};
}

RawContacts frame(std::initializer_list<RawContact> list) {
  RawContacts contacts;
  for (const RawContact& contact : list) contacts.push(contact);
  return contacts;
}

class TouchFramesTest : public testing::Test {
 protected:
  TouchFrames frames_{surfaceModel(magicTrackpad())};
};

TEST_F(TouchFramesTest, nothingIsSaidWhileNothingIsDown) {
  EXPECT_FALSE(frames_.next(frame({}), 0));
}

TEST_F(TouchFramesTest, aListenerHearsFirstThatNothingIsDown) {
  EXPECT_TRUE(frames_.first(frame({}), 0).touches.empty());
  EXPECT_EQ(frames_.first(frame({finger(1)}), 0).touches.size(), 1U);
}

TEST_F(TouchFramesTest, theLastLiftIsOneEmptyFrame) {
  EXPECT_TRUE(frames_.next(frame({finger(1)}), 0));
  const auto lifted = frames_.next(frame({}), 0.01);
  ASSERT_TRUE(lifted);
  EXPECT_TRUE(lifted->touches.empty());
  EXPECT_FALSE(frames_.next(frame({}), 0.02));
}

TEST_F(TouchFramesTest, stagesBeginWithLanding) {
  EXPECT_EQ(frames_.next(frame({finger(1)}), 0)->touches[0].stage, 3);
  const auto second = frames_.next(frame({finger(1), finger(2)}), 0.01);
  EXPECT_EQ(second->touches[0].stage, 4);
  EXPECT_EQ(second->touches[1].stage, 3);
}

TEST_F(TouchFramesTest, velocityIsPerSecondOfTheDevicesClock) {
  static_cast<void>(frames_.next(frame({finger(1, 0, 0)}), 10));
  const auto moved = frames_.next(frame({finger(1, 7612 / 4, 0)}), 10.02);
  EXPECT_NEAR(static_cast<double>(moved->touches[0].velocity.x), 0.25 / 0.02, 0.01);
  EXPECT_FLOAT_EQ(moved->touches[0].velocity.y, 0);
}

TEST_F(TouchFramesTest, bunchedReportsAreNotFastFingers) {
  for (const double interval : {0.0, 0.001, -0.5}) {
    TouchFrames frames(surfaceModel(magicTrackpad()));
    static_cast<void>(frames.next(frame({finger(1, 0, 0)}), 10));
    const auto moved = frames.next(frame({finger(1, 76, 0)}), 10 + interval);
    EXPECT_NEAR(static_cast<double>(moved->touches[0].velocity.x), 76.0 / 7612 / 0.004, 0.01)
        << interval;
  }
}

TEST_F(TouchFramesTest, afterAPauseNobodyKnowsTheSpeed) {
  static_cast<void>(frames_.next(frame({finger(1, 0, 0)}), 10));
  const auto moved = frames_.next(frame({finger(1, 1000, 0)}), 10.2);
  EXPECT_FLOAT_EQ(moved->touches[0].velocity.x, 0);
}

TEST_F(TouchFramesTest, aRestingFingertipMeasuresOne) {
  const auto first = frames_.next(frame({finger(1)}), 0);
  EXPECT_FLOAT_EQ(first->touches[0].size, 1);
  EXPECT_FLOAT_EQ(first->touches[0].density, 1);
  EXPECT_FLOAT_EQ(first->touches[0].pressure, 41);
}

TEST_F(TouchFramesTest, aSurfaceWithoutSizesReportsFingertips) {
  EvdevDevice device = magicTrackpad();
  device.absoluteAxes[ABS_MT_TOUCH_MAJOR].reset();
  TouchFrames frames(surfaceModel(device));
  const auto first = frames.next(frame({{.id = 1, .x = 0, .y = 0}}), 0);
  EXPECT_FLOAT_EQ(first->touches[0].size, 1);
  EXPECT_FLOAT_EQ(first->touches[0].density, 1);
}

TEST_F(TouchFramesTest, refusedContactsAreNotInTheFrame) {
  RawContact palm = finger(1);
  palm.major = 1000;
  EXPECT_FALSE(frames_.next(frame({palm}), 0)) << "a palm alone is nothing";
  EXPECT_EQ(frames_.next(frame({palm, finger(2, 3000, 2000)}), 0.2)->touches.size(), 1U);
}

RawContact palm(std::int32_t id, int x = 128) {
  RawContact contact = finger(id, x);
  contact.major = 1000;
  return contact;
}

// Three parts of a hand that only then turns out to be one must not look like three fingers that
// lift all at once.
TEST_F(TouchFramesTest, aLateRefusalIsNotTheEndOfATap) {
  static_cast<void>(frames_.next(frame({finger(1), finger(2), finger(3)}), 0));
  EXPECT_EQ(frames_.next(frame({palm(1), palm(2), palm(3)}), 0.05)->touches.size(), 3U);
  EXPECT_EQ(frames_.next(frame({palm(1), palm(2), palm(3)}), 2)->touches.size(), 3U);
  const auto later = frames_.next(frame({palm(1), palm(2), palm(3)}), 2.001);
  ASSERT_TRUE(later);
  EXPECT_TRUE(later->touches.empty()) << "no tap lasts so long";
  EXPECT_TRUE(frames_.next(frame({palm(1), palm(2), palm(3), finger(4, 3000)}), 2.2));
}

TEST_F(TouchFramesTest, aPalmAmongThreeKeepsTheirTapFromEnding) {
  static_cast<void>(frames_.next(frame({finger(1), finger(2, 3000), finger(3, 3500)}), 0));
  static_cast<void>(frames_.next(frame({palm(1), finger(2, 3000), finger(3, 3500)}), 0.05));
  const auto lifted = frames_.next(frame({palm(1)}), 0.1);
  ASSERT_TRUE(lifted);
  EXPECT_EQ(lifted->touches.size(), 1U);
  EXPECT_TRUE(frames_.next(frame({}), 0.5)->touches.empty());
  EXPECT_FALSE(frames_.next(frame({palm(4)}), 0.6)) << "a new session, and not told of yet";
}

TEST_F(TouchFramesTest, whatNobodyTookForATapIsTakenBackAtOnce) {
  static_cast<void>(frames_.next(frame({finger(1), finger(2, 3000)}), 0));
  EXPECT_EQ(frames_.next(frame({palm(1), finger(2, 3000)}), 0.05)->touches.size(), 1U);
}

// What the kernel calls a contact, in which slot it stands and when it was recorded are accidents.
TEST_F(TouchFramesTest, accidentsDoNotMatter) {
  const auto play = [](std::initializer_list<RawContact> a, std::initializer_list<RawContact> b,
                       double start) {
    TouchFrames frames(surfaceModel(magicTrackpad()));
    static_cast<void>(frames.next(frame(a), start));
    const auto second = frames.next(frame(b), start + 0.01);
    std::vector<std::pair<float, float>> seen;
    for (const MTTouch& touch : second->touches) {
      seen.emplace_back(touch.position.x, touch.velocity.x);
    }
    std::sort(seen.begin(), seen.end());
    return seen;
  };
  const auto reference = play({finger(1, 0), finger(2, 500)}, {finger(1, 20), finger(2, 510)}, 0);
  EXPECT_EQ(play({finger(2, 500), finger(1, 0)}, {finger(2, 510), finger(1, 20)}, 0), reference);
  EXPECT_EQ(play({finger(77, 0), finger(5, 500)}, {finger(77, 20), finger(5, 510)}, 0), reference);
}

}  // namespace
}  // namespace velotap::test
