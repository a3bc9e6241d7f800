#include "settings/tuning_values.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "settings_fixture.hpp"
#include "tap_activities.hpp"

namespace velotap {
namespace {

using test::english;
using Kind = TapLimitSuggestion::Kind;

TEST(TuningValues, KnowTheFactoryTuning) {
  EXPECT_TRUE(isDefaultTuning({}));
  EXPECT_TRUE(isDefaultTuning({.maxTapDrift = 0.05 + 0.9e-9}));
  EXPECT_FALSE(isDefaultTuning({.maxTapDrift = 0.05 + 1.1e-9}));
  EXPECT_FALSE(isDefaultTuning({.maxTapDrift = 0.0500001}));
  EXPECT_FALSE(isDefaultTuning({.maxTapDurationMs = 301}));
  EXPECT_FALSE(isDefaultTuning({.pinchSensitivity = 1.1}));
  EXPECT_FALSE(isDefaultTuning({.centerMinX = 0.36}));
  EXPECT_FALSE(isDefaultTuning({.centerMaxX = 0.64}));
}

TEST(TuningUndo, RestoresEachValueByItself) {
  const TuningUndo undo{.before = {}, .after = {.maxTapDurationMs = 220, .maxTapDrift = 0.03}};
  EXPECT_EQ(undo.restoring(undo.after), TuningSnapshot{});
  EXPECT_EQ(undo.restoring({.maxTapDurationMs = 250, .maxTapDrift = 0.03}),
            (TuningSnapshot{.maxTapDurationMs = 250}));
  EXPECT_EQ(undo.restoring({.maxTapDurationMs = 220, .maxTapDrift = 0.03, .centerMinX = 0.2}),
            (TuningSnapshot{.centerMinX = 0.2}));
}

TEST(TuningSlider, SnapsToItsStepsWithinItsRange) {
  const TuningSlider& duration = tuningSlider(TuningValue::maxTapDuration);
  EXPECT_EQ(duration.snapped(304.9), 300);
  EXPECT_EQ(duration.snapped(305.1), 310);
  EXPECT_EQ(duration.snapped(0), 150);
  EXPECT_EQ(duration.snapped(9999), 500);
  EXPECT_EQ(duration.snapped(std::numeric_limits<double>::quiet_NaN()), 300);
  const TuningSlider& drift = tuningSlider(TuningValue::maxTapDrift);
  EXPECT_EQ(drift.snapped(0.0512), 0.05);
  EXPECT_EQ(drift.snapped(0.07), 0.07);
  EXPECT_EQ(drift.snapped(0.151), 0.15);
}

TEST(TuningSlider, StepsAreClampedToTheRange) {
  for (const TuningSlider& slider : tuningSliders()) {
    EXPECT_EQ(slider.decremented(slider.lowest), slider.lowest) << slider.titleKey;
    EXPECT_EQ(slider.incremented(slider.highest), slider.highest) << slider.titleKey;
    EXPECT_NEAR(slider.incremented(slider.lowest), slider.lowest + slider.step, 1e-12);
    EXPECT_NEAR(slider.decremented(slider.highest), slider.highest - slider.step, 1e-12);
  }
  EXPECT_EQ(tuningSlider(TuningValue::maxTapDuration).incremented(2000), 500);
  double value = 0.02;
  for (int i = 0; i < 3; ++i) value = tuningSlider(TuningValue::maxTapDrift).incremented(value);
  EXPECT_EQ(value, 0.05);
}

TEST(TuningValues, AreWrittenInTheirUnitAndRegion) {
  EXPECT_EQ(tuningValueText(TuningValue::maxTapDuration, 300, english()), "300\u00A0ms");
  EXPECT_EQ(tuningValueText(TuningValue::maxTapDrift, 0.05, english()), "0.05");
  EXPECT_EQ(tuningValueText(TuningValue::pinchSensitivity, 1, english()), "1.0×");
  EXPECT_EQ(tuningValueText(TuningValue::centerMinX, 0.35, english()), "35%");
  EXPECT_EQ(tuningValueText(TuningValue::pinchSensitivity, 1, test::textsIn("de")), "1,0×");
  EXPECT_EQ(tuningValueText(TuningValue::centerMaxX, 0.65, test::textsIn("fr")), "65\u202F%");
}

TEST(TuningValues, AreCutToWholeMilliseconds) {
  TuningSnapshot values;
  setTuningValue(values, TuningValue::maxTapDuration, 309.9);
  EXPECT_EQ(values.maxTapDurationMs, 309);
}

TEST(TapLimitSuggestion, IsTheNextStepThatWouldHaveAcceptedALongTap) {
  EXPECT_EQ(tapLimitSuggestion(test::tooLong(1, 0.341), {}),
            (TapLimitSuggestion{.kind = Kind::duration, .milliseconds = 350}));
  EXPECT_EQ(tapLimitSuggestion(test::tooLong(1, 0.5), {}),
            (TapLimitSuggestion{.kind = Kind::duration, .milliseconds = 500}));
  EXPECT_FALSE(tapLimitSuggestion(test::tooLong(1, 0.503), {}));
  EXPECT_EQ(tapLimitSuggestion(test::tooLong(1, 0.145), {.maxTapDurationMs = 140}),
            (TapLimitSuggestion{.kind = Kind::duration, .milliseconds = 150}));
  EXPECT_FALSE(tapLimitSuggestion(test::tooLong(1, 0.139), {.maxTapDurationMs = 130}));
}

TEST(TapLimitSuggestion, IsSilentWhenTheLimitIsWideEnoughByNow) {
  EXPECT_TRUE(tapLimitSuggestion(test::tooLong(1, 0.341), {.maxTapDurationMs = 349}));
  EXPECT_FALSE(tapLimitSuggestion(test::tooLong(1, 0.341), {.maxTapDurationMs = 350}));
  EXPECT_FALSE(tapLimitSuggestion(test::tooLong(1, 0.341), {.maxTapDurationMs = 400}));
  EXPECT_TRUE(tapLimitSuggestion(test::moved(1, 0.0612), {.maxTapDrift = 0.069}));
  EXPECT_FALSE(tapLimitSuggestion(test::moved(1, 0.0612), {.maxTapDrift = 0.07}));
}

TEST(TapLimitSuggestion, IsTheNextHundredthThatWouldHaveAcceptedAMovedTap) {
  EXPECT_EQ(tapLimitSuggestion(test::moved(1, 0.0612), {}),
            (TapLimitSuggestion{.kind = Kind::drift, .drift = 0.07}));
  EXPECT_FALSE(tapLimitSuggestion(test::moved(1, 0.2), {}));
  EXPECT_TRUE(tapLimitSuggestion(test::moved(1, 0.1499), {}));
  EXPECT_FALSE(tapLimitSuggestion(test::moved(1, 0.1501), {}));
  EXPECT_FALSE(tapLimitSuggestion(test::moved(1, 0.009), {.maxTapDrift = 0.001}));
}

TEST(TapLimitSuggestion, HelpsNoOtherOutcome) {
  EXPECT_FALSE(tapLimitSuggestion(test::tapNumber(1), {}));
  EXPECT_FALSE(tapLimitSuggestion(test::tooSoon(1), {}));
}

TEST(TapLimitSuggestion, SaysWhatItAllows) {
  const TapLimitSuggestion longer{.kind = Kind::duration, .milliseconds = 350};
  EXPECT_EQ(longer.title(english()), "Allow 350\u00A0ms");
  EXPECT_EQ(longer.context(english()), "Max tap duration");
  const TapLimitSuggestion farther{.kind = Kind::drift, .drift = 0.07};
  EXPECT_EQ(farther.title(english()), "Allow 0.07");
  EXPECT_EQ(farther.context(english()), "Finger drift tolerance");
}

}  // namespace
}  // namespace velotap
