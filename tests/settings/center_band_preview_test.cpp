#include "settings/center_band_preview.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(CenterBandPreview, LiesWhereTheBandLies) {
  const CenterBandPreview factory = centerBandPreview(0.35, 0.65, 200);
  EXPECT_NEAR(factory.x, 70, 1e-4);
  EXPECT_NEAR(factory.width, 60, 1e-4);
  const CenterBandPreview none = centerBandPreview(0.5, 0.5, 200);
  EXPECT_NEAR(none.x, 100, 1e-4);
  EXPECT_EQ(none.width, 0);
}

TEST(CenterBandPreview, ShowsTheBandThatIsInForce) {
  const CenterBandPreview swapped = centerBandPreview(0.7, 0.3, 100);
  EXPECT_NEAR(swapped.x, 35, 1e-4);
  EXPECT_NEAR(swapped.width, 30, 1e-4);
}

TEST(CenterBandPreview, TakesHoldOfTheNearerEdge) {
  const auto edge = [](double position) { return centerBandEdgeAt(position, 0.25, 0.75, 100); };
  EXPECT_EQ(edge(0), TuningValue::centerMinX);
  EXPECT_EQ(edge(49), TuningValue::centerMinX);
  EXPECT_EQ(edge(50), TuningValue::centerMinX);
  EXPECT_EQ(edge(51), TuningValue::centerMaxX);
  EXPECT_EQ(edge(100), TuningValue::centerMaxX);
}

TEST(CenterBandPreview, OfNoWidthIsOpenedEitherWay) {
  EXPECT_EQ(centerBandEdgeAt(99, 0.5, 0.5, 200), TuningValue::centerMinX);
  EXPECT_EQ(centerBandEdgeAt(100, 0.5, 0.5, 200), TuningValue::centerMinX);
  EXPECT_EQ(centerBandEdgeAt(101, 0.5, 0.5, 200), TuningValue::centerMaxX);
}

TEST(CenterBandPreview, DragsWithinTheSlidersRange) {
  EXPECT_EQ(centerBandEdgeValue(TuningValue::centerMinX, 42, 200), 0.21);
  EXPECT_EQ(centerBandEdgeValue(TuningValue::centerMinX, -5, 200), 0.1);
  EXPECT_EQ(centerBandEdgeValue(TuningValue::centerMinX, 150, 200), 0.5);
  EXPECT_EQ(centerBandEdgeValue(TuningValue::centerMaxX, 150, 200), 0.75);
  EXPECT_EQ(centerBandEdgeValue(TuningValue::centerMaxX, 500, 200), 0.9);
  EXPECT_EQ(centerBandEdgeValue(TuningValue::centerMaxX, 5, 0), 0.65);
}

}  // namespace
}  // namespace velotap
