#include "config/practice_target.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(PracticeTarget, ContainsNothingUntilItIsSet) {
  const PracticeTarget target;
  EXPECT_FALSE(target.contains({0, 0}));
}

TEST(PracticeTarget, ContainsItsLeftAndTopEdgeOnly) {
  PracticeTarget target;
  target.set(Rect{10, 20, 30, 40});
  EXPECT_TRUE(target.contains({10, 20}));
  EXPECT_TRUE(target.contains({39.999, 59.999}));
  EXPECT_FALSE(target.contains({9.999, 20}));
  EXPECT_FALSE(target.contains({10, 19.999}));
  EXPECT_FALSE(target.contains({40, 30}));
  EXPECT_FALSE(target.contains({20, 60}));
}

TEST(PracticeTarget, AnEmptyRectangleContainsNothing) {
  PracticeTarget target;
  target.set(Rect{10, 20, 0, 0});
  EXPECT_FALSE(target.contains({10, 20}));
}

TEST(PracticeTarget, MayBeTakenAway) {
  PracticeTarget target;
  target.set(Rect{10, 20, 30, 40});
  target.set(std::nullopt);
  EXPECT_FALSE(target.contains({15, 25}));
}

TEST(PracticeTarget, BelongsToTheSurfaceThatPublishedLast) {
  PracticeTarget target;
  target.update(1, Rect{10, 20, 30, 40});
  target.update(2, Rect{100, 200, 30, 40});
  target.update(1, std::nullopt);
  EXPECT_TRUE(target.contains({105, 205})) << "a surface that stops takes nothing from the owner";
  EXPECT_FALSE(target.contains({15, 25}));
  target.update(2, std::nullopt);
  EXPECT_FALSE(target.contains({105, 205}));
}

TEST(PracticeTarget, IsTakenOverByASurfaceThatPublishesAgain) {
  PracticeTarget target;
  target.update(1, Rect{10, 20, 30, 40});
  target.update(2, Rect{100, 200, 30, 40});
  target.update(1, Rect{10, 20, 30, 40});
  target.update(2, std::nullopt);
  EXPECT_TRUE(target.contains({15, 25}));
}

}  // namespace
}  // namespace velotap
