#include "gestures/finger.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>

#include "support/touches.hpp"

namespace velotap {
namespace {

using test::touch;
using test::TouchSpec;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();

std::vector<std::int32_t> idsOf(const Fingers& fingers) {
  std::vector<std::int32_t> ids;
  for (const Finger& finger : fingers) ids.push_back(finger.id);
  return ids;
}

Fingers reduce(const test::Frame& frame) {
  return activeFingers(frame.data(), static_cast<std::ptrdiff_t>(frame.size()));
}

TEST(ActiveFingers, ANullPointerOrACountBelowOneIsAnEmptyFrame) {
  const MTTouch one = touch({});
  EXPECT_TRUE(activeFingers(nullptr, 0).empty());
  EXPECT_TRUE(activeFingers(nullptr, 5).empty());
  EXPECT_TRUE(activeFingers(&one, 0).empty());
  EXPECT_TRUE(activeFingers(&one, -1).empty());
  EXPECT_TRUE(activeFingers(&one, std::numeric_limits<std::ptrdiff_t>::min()).empty());
  EXPECT_EQ(activeFingers(&one, 1).size(), 1U);
}

TEST(ActiveFingers, CopiesWhatIsReadAndNothingElse) {
  const MTTouch record = touch({.id = -5,
                                .x = 0.25F,
                                .y = 0.75F,
                                .vx = 1.5F,
                                .vy = -2.5F,
                                .size = 0.5F,
                                .density = 0.125F,
                                .millimetresPerUnit = 80});
  const Fingers result = activeFingers(&record, 1);
  ASSERT_EQ(result.size(), 1U);
  const Finger& finger = result[0];
  EXPECT_EQ(finger.id, -5);
  EXPECT_EQ(finger.pos, (MTPoint{0.25F, 0.75F}));
  EXPECT_EQ(finger.mmPos, (MTPoint{20, 60}));
  EXPECT_EQ(finger.velocity, (MTPoint{1.5F, -2.5F}));
  EXPECT_EQ(finger.zTotal, 0.5F);
  EXPECT_EQ(finger.zDensity, 0.125F);
}

TEST(ActiveFingers, OnlyStagesThreeToFiveTouch) {
  for (const std::int32_t stage :
       {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, std::numeric_limits<std::int32_t>::min(),
        std::numeric_limits<std::int32_t>::max()}) {
    const bool touches = stage == 3 || stage == 4 || stage == 5;
    EXPECT_EQ(reduce({touch({.stage = stage})}).size(), touches ? 1U : 0U) << stage;
  }
}

TEST(ActiveFingers, EachOfTheEightNumbersMustBeFinite) {
  float MTTouch::*const plain[] = {&MTTouch::size, &MTTouch::density};
  MTPoint MTTouch::*const points[] = {&MTTouch::position, &MTTouch::millimetres,
                                      &MTTouch::velocity};
  for (const float bad : {kNaN, kInfinity, -kInfinity}) {
    for (const auto member : plain) {
      MTTouch record = touch({});
      record.*member = bad;
      EXPECT_TRUE(activeFingers(&record, 1).empty());
    }
    for (const auto member : points) {
      MTTouch badX = touch({});
      (badX.*member).x = bad;
      EXPECT_TRUE(activeFingers(&badX, 1).empty());
      MTTouch badY = touch({});
      (badY.*member).y = bad;
      EXPECT_TRUE(activeFingers(&badY, 1).empty());
    }
    MTTouch pressure = touch({});
    pressure.pressure = bad;
    EXPECT_EQ(activeFingers(&pressure, 1).size(), 1U) << "pressure is not read";
  }
}

TEST(ActiveFingers, LargeNumbersAndInfinitiesThatCancelAreToldApart) {
  MTTouch record = touch({.x = kLargest,
                          .y = -kLargest,
                          .vx = kLargest,
                          .vy = kLargest,
                          .size = kLargest,
                          .density = -kLargest,
                          .millimetresPerUnit = 1});
  EXPECT_EQ(activeFingers(&record, 1).size(), 1U);
  record.position = {kInfinity, -kInfinity};
  EXPECT_TRUE(activeFingers(&record, 1).empty());
}

TEST(ActiveFingers, LooksAtNoMoreThanSixteenRecords) {
  const test::Frame twenty = test::row(20);
  EXPECT_EQ(idsOf(reduce(twenty)),
            (std::vector<std::int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
  // Exactly sixteen records in memory; the address sanitizer sees a read beyond them.
  const test::Frame sixteen = test::row(16);
  EXPECT_EQ(activeFingers(sixteen.data(), std::numeric_limits<std::int32_t>::max()).size(), 16U);
  EXPECT_EQ(activeFingers(sixteen.data(), std::numeric_limits<std::ptrdiff_t>::max()).size(), 16U);
}

TEST(ActiveFingers, TheCapCountsRecordsNotFingers) {
  test::Frame frame;
  for (int i = 0; i < 15; ++i) frame.push_back(touch({.id = i, .stage = 7}));
  frame.push_back(touch({.id = 100}));
  frame.push_back(touch({.id = 101}));
  EXPECT_EQ(idsOf(reduce(frame)), std::vector<std::int32_t>{100});
}

TEST(ActiveFingers, KeepsTheFirstRecordOfEachIdentifier) {
  const Fingers result = reduce({touch({.id = 7, .x = 0.1F}), touch({.id = 8, .x = 0.2F}),
                                 touch({.id = 7, .x = 0.3F}), touch({.id = 8, .x = 0.4F})});
  ASSERT_EQ(idsOf(result), (std::vector<std::int32_t>{7, 8}));
  EXPECT_EQ(result[0].pos.x, 0.1F);
  EXPECT_EQ(result[1].pos.x, 0.2F);
}

TEST(ActiveFingers, ARecordThatIsDroppedDoesNotTakeItsIdentifierWithIt) {
  const Fingers result =
      reduce({touch({.id = 7, .x = 0.1F, .stage = 2}), touch({.id = 7, .x = 0.2F, .vx = kNaN}),
              touch({.id = 7, .x = 0.3F}), touch({.id = 7, .x = 0.4F})});
  ASSERT_EQ(idsOf(result), std::vector<std::int32_t>{7});
  EXPECT_EQ(result[0].pos.x, 0.3F);
}

TEST(ActiveFingers, IdentifiersThatShareABitAreToldApart) {
  constexpr auto kMin = std::numeric_limits<std::int32_t>::min();
  const std::vector<std::int32_t> ids = {1, 65, 129, 1 - 64, kMin + 1, kMin, 0, 64, -64};
  test::Frame frame;
  for (const auto id : ids) frame.push_back(touch({.id = id}));
  EXPECT_EQ(idsOf(reduce(frame)), ids);
  std::reverse(frame.begin(), frame.end());
  frame.resize(ids.size() + 2, frame.front());
  EXPECT_EQ(reduce(frame).size(), ids.size());
}

// Against the rules written down plainly, on records whose values are drawn from few, so that
// every rule applies often.
TEST(ActiveFingers, AgreesWithAPlainModel) {
  std::mt19937 random(7);
  const auto pick = [&random](const auto& list) {
    return list[std::uniform_int_distribution<std::size_t>(0, std::size(list) - 1)(random)];
  };
  const std::int32_t ids[] = {0, 1, 2, 3, 64, 65, -64, -1, 128};
  const std::int32_t stages[] = {2, 3, 4, 4, 4, 5, 5, 6};
  const float numbers[] = {0, 0.5F, 1, -1, kLargest, 0.25F, 0.75F, 2, 3, 4, 5, kNaN, kInfinity};
  for (int round = 0; round < 20000; ++round) {
    test::Frame frame;
    const int n = std::uniform_int_distribution(0, 20)(random);
    for (int i = 0; i < n; ++i) {
      MTTouch record = touch({.id = pick(ids), .stage = pick(stages)});
      if (random() % 3 == 0) record.position.x = pick(numbers);
      if (random() % 3 == 0) record.velocity.y = pick(numbers);
      if (random() % 3 == 0) record.density = pick(numbers);
      frame.push_back(record);
    }
    std::vector<std::pair<std::int32_t, float>> expected;
    std::set<std::int32_t> seen;
    for (std::size_t i = 0; i < std::min<std::size_t>(frame.size(), 16); ++i) {
      const MTTouch& t = frame[i];
      if (t.stage < 3 || t.stage > 5) continue;
      if (!std::isfinite(t.position.x) || !std::isfinite(t.velocity.y)) continue;
      if (!std::isfinite(t.density)) continue;
      if (seen.insert(t.identifier).second) expected.emplace_back(t.identifier, t.position.x);
    }
    const Fingers result = reduce(frame);
    ASSERT_EQ(result.size(), expected.size()) << "round " << round;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(result[i].id, expected[i].first);
      ASSERT_EQ(result[i].pos.x, expected[i].second);
    }
  }
}

}  // namespace
}  // namespace velotap
