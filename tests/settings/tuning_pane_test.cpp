#include "settings/tuning_pane.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gestures/fingers.hpp"
#include "settings/settings_capture.hpp"
#include "settings_fixture.hpp"
#include "support/desktop.hpp"
#include "tap_activities.hpp"

namespace velotap {
namespace {

using test::english;

class TuningPaneTest : public ::testing::Test {
 protected:
  [[nodiscard]] TuningView view() const { return pane.view(english()); }
  void record(const TapActivity& tap) {
    log.record(tap);
    desktop.mainQueue.runDue();
  }

  /// A tap with the contacts behind it: the first of three fingers strays.
  void touch(const TapActivity& tap) {
    TouchTrace trace;
    for (const float strayed : {0.0F, static_cast<float>(tap.drift)}) {
      trace.add(test::fingers(
          {test::finger(1, 0.2F, strayed), test::finger(2, 0.4F, 0), test::finger(3, 0.6F, 0)}));
    }
    log.record(tap, trace, 10.0 * tap.id, 100);
    desktop.mainQueue.runDue();
  }

  test::Desktop desktop;
  test::StoredSettings settings;
  TapActivityLog log{desktop.mainQueue, desktop.notifications};
  std::vector<std::string> announced;
  int changes = 0;
  TuningPane pane{settings.defaults, log, desktop.notifications,
                  [this](std::string_view key) { announced.emplace_back(key); },
                  [this] { ++changes; }};
};

TEST_F(TuningPaneTest, StartsWithTheFactoryTuning) {
  EXPECT_EQ(pane.snapshot(), TuningSnapshot{});
  EXPECT_TRUE(pane.isDefaultTuning());
  const TuningView view = this->view();
  EXPECT_EQ(view.state, "Default tuning");
  EXPECT_EQ(view.stateSymbol, "checkmark.seal");
  EXPECT_FALSE(view.canRestore);
  EXPECT_EQ(view.undoTitle, "");
  EXPECT_EQ(view.duration.text, "300\u00A0ms");
  EXPECT_EQ(view.duration.lowLabel, "Shorter taps");
  EXPECT_EQ(view.sensitivity.text, "1.0×");
  EXPECT_EQ(view.centerLabel, "Center band from 35% to 65%");
  EXPECT_TRUE(view.presets[1].chosen);
  EXPECT_TRUE(view.centerPresets[1].chosen);
}

TEST_F(TuningPaneTest, APresetSetsDurationAndDriftOnly) {
  pane.moveSlider(TuningValue::pinchSensitivity, 2);
  pane.applyPreset(220, 0.03);
  EXPECT_EQ(pane.snapshot(),
            (TuningSnapshot{.maxTapDurationMs = 220, .maxTapDrift = 0.03, .pinchSensitivity = 2}));
  EXPECT_TRUE(view().presets[0].chosen);
  EXPECT_EQ(view().state, "Custom tuning");
  EXPECT_EQ(view().undoTitle, "Undo");
  EXPECT_EQ(view().comparison,
            (std::vector<std::string>{"Max tap duration: 300\u00A0ms → 220\u00A0ms",
                                      "Finger drift tolerance: 0.05 → 0.03"}));
  EXPECT_EQ(announced, (std::vector<std::string>{"Tuning updated"}));
  pane.undo();
  EXPECT_EQ(pane.snapshot(), (TuningSnapshot{.pinchSensitivity = 2}));
  EXPECT_EQ(announced.back(), "Tuning restored");
  EXPECT_FALSE(pane.lastChange());
}

TEST_F(TuningPaneTest, AnUndoKeepsWhatWasMovedSince) {
  pane.applyPreset(220, 0.03);
  pane.moveSlider(TuningValue::maxTapDuration, 250);
  pane.undo();
  EXPECT_EQ(pane.snapshot(), (TuningSnapshot{.maxTapDurationMs = 250}));
}

TEST_F(TuningPaneTest, OnlyTheLastChangeCanBeUndone) {
  pane.applyPreset(220, 0.03);
  pane.applyCenter(0.4, 0.6);
  pane.undo();
  EXPECT_EQ(pane.snapshot(), (TuningSnapshot{.maxTapDurationMs = 220, .maxTapDrift = 0.03}));
  pane.undo();
  EXPECT_EQ(pane.snapshot().maxTapDurationMs, 220);
  EXPECT_EQ(announced.size(), 3U) << "an undo without a change says nothing";
}

TEST_F(TuningPaneTest, MovingASliderLeavesNoUndo) {
  pane.moveSlider(TuningValue::maxTapDrift, 0.0849);
  pane.decrement(TuningValue::maxTapDuration);
  pane.increment(TuningValue::centerMaxX);
  EXPECT_EQ(pane.snapshot(),
            (TuningSnapshot{.maxTapDurationMs = 290, .maxTapDrift = 0.08, .centerMaxX = 0.66}));
  EXPECT_FALSE(pane.lastChange());
  EXPECT_TRUE(announced.empty());
  EXPECT_TRUE(view().drift.canReset);
  EXPECT_EQ(view().drift.resetLabel, "Reset Finger drift tolerance");
  pane.reset(TuningValue::maxTapDrift);
  EXPECT_EQ(pane.snapshot().maxTapDrift, 0.05);
  EXPECT_FALSE(view().drift.canReset);
}

TEST_F(TuningPaneTest, StepsEndAtTheEndsOfTheRange) {
  pane.moveSlider(TuningValue::maxTapDuration, 500);
  EXPECT_FALSE(view().duration.canIncrease);
  EXPECT_TRUE(view().duration.canDecrease);
  pane.increment(TuningValue::maxTapDuration);
  EXPECT_EQ(pane.snapshot().maxTapDurationMs, 500);
  pane.moveSlider(TuningValue::maxTapDuration, 150);
  EXPECT_FALSE(view().duration.canDecrease);
}

TEST_F(TuningPaneTest, RestoresAllFiveDefaults) {
  for (const TuningSlider& slider : tuningSliders()) pane.moveSlider(slider.value, slider.highest);
  EXPECT_TRUE(view().canRestore);
  pane.restoreDefaults();
  EXPECT_TRUE(pane.isDefaultTuning());
  EXPECT_EQ(view().comparison.size(), 5U);
  pane.undo();
  EXPECT_EQ(pane.snapshot().centerMaxX, 0.9);
  EXPECT_EQ(pane.snapshot().maxTapDurationMs, 500);
}

TEST_F(TuningPaneTest, ReadsJunkAsTheFactoryValue) {
  settings.defaults.set("maxTapDrift", "wide");
  settings.defaults.set("maxTapDurationMs", 99999);
  EXPECT_EQ(pane.snapshot(), (TuningSnapshot{.maxTapDurationMs = 2000}));
}

TEST_F(TuningPaneTest, AppliesASuggestionToItsOneSetting) {
  pane.apply({.kind = TapLimitSuggestion::Kind::duration, .milliseconds = 350});
  EXPECT_EQ(pane.snapshot(), (TuningSnapshot{.maxTapDurationMs = 350}));
  pane.apply({.kind = TapLimitSuggestion::Kind::drift, .drift = 0.07});
  EXPECT_EQ(pane.snapshot(), (TuningSnapshot{.maxTapDurationMs = 350, .maxTapDrift = 0.07}));
  pane.undo();
  EXPECT_EQ(pane.snapshot(), (TuningSnapshot{.maxTapDurationMs = 350}));
}

TEST_F(TuningPaneTest, TheListFollowsTheLogUnlessPaused) {
  record(test::tapNumber(1));
  EXPECT_EQ(view().taps.rows.size(), 1U);
  EXPECT_EQ(changes, 1);
  pane.setPaused(true);
  record(test::tapNumber(2));
  EXPECT_EQ(view().taps.rows.size(), 1U);
  EXPECT_EQ(changes, 1);
  EXPECT_NE(view().taps.pausedNote, "");
  pane.setPaused(false);
  EXPECT_EQ(view().taps.rows.size(), 2U);
  pane.clearTaps();
  EXPECT_EQ(view().taps.empty, "No taps yet");
}

TEST_F(TuningPaneTest, ARefusedTapIsMendedWithOneClick) {
  touch(test::tooLong(1, 0.341));
  EXPECT_EQ(view().duration.evidence, "Recent touches accepted: 0 of 1");
  const auto suggestion = view().taps.rows[0].suggestion;
  ASSERT_TRUE(suggestion);
  pane.apply(*suggestion);
  EXPECT_EQ(view().duration.evidence, "Recent touches accepted: 1 of 1");
  EXPECT_FALSE(view().taps.rows[0].suggestion) << "the limit is wide enough now";
}

TEST_F(TuningPaneTest, EachSliderTellsOfTheTouchesThatItJudges) {
  EXPECT_EQ(view().duration.evidence, "") << "evidence needs touches";
  touch(test::tapNumber(1));
  EXPECT_EQ(view().drift.evidence, "Recent touches accepted: 1 of 1");
  EXPECT_EQ(view().sensitivity.evidence, "") << "taps tell nothing about pinches";
  EXPECT_EQ(view().leftEdge.evidence, "");
  pane.clearTaps();
  EXPECT_EQ(view().drift.evidence, "Recent touches accepted: 1 of 1")
      << "tidying the list forgets no evidence";
}

TEST_F(TuningPaneTest, EvidenceFollowsTheSliders) {
  recordCaptureTouches(log);
  desktop.mainQueue.runDue();
  EXPECT_EQ(view().duration.evidence, "Recent touches accepted: 2 of 4");
  EXPECT_EQ(view().drift.evidence, "Recent touches accepted: 2 of 4");
  EXPECT_EQ(view().sensitivity.evidence, "Recent pinches that zoom by a step: 3 of 4");
  EXPECT_EQ(view().leftEdge.evidence, "Recent one-finger clicks inside the band: 4 of 5");
  EXPECT_EQ(view().rightEdge.evidence, view().leftEdge.evidence);
  pane.moveSlider(TuningValue::maxTapDuration, 350);
  EXPECT_EQ(view().duration.evidence, "Recent touches accepted: 3 of 4");
  pane.moveSlider(TuningValue::maxTapDrift, 0.07);
  EXPECT_EQ(view().drift.evidence, "Recent touches accepted: 4 of 4");
  pane.moveSlider(TuningValue::pinchSensitivity, 0.3);
  EXPECT_EQ(view().sensitivity.evidence, "Recent pinches that zoom by a step: 1 of 4");
  pane.moveSlider(TuningValue::centerMaxX, 0.66);
  EXPECT_EQ(view().rightEdge.evidence, "Recent one-finger clicks inside the band: 5 of 5");
  pane.moveSlider(TuningValue::centerMinX, 0.45);
  EXPECT_EQ(view().leftEdge.evidence, "Recent one-finger clicks inside the band: 4 of 5");
}

TEST_F(TuningPaneTest, PinchesAndClicksAreEvidenceAsSoonAsTheyHappen) {
  log.keepClick({0.5F, 0.5F});
  desktop.mainQueue.runDue();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(view().leftEdge.evidence, "Recent one-finger clicks inside the band: 1 of 1");
  pane.setPaused(true);
  log.keepClick({0.9F, 0.5F});
  desktop.mainQueue.runDue();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(view().leftEdge.evidence, "Recent one-finger clicks inside the band: 1 of 1");
  pane.setPaused(false);
  EXPECT_EQ(view().leftEdge.evidence, "Recent one-finger clicks inside the band: 1 of 2");
}

TEST_F(TuningPaneTest, FineStepsLeadFromWhereTheValueIs) {
  settings.defaults.set("maxTapDurationMs", 305);
  pane.decrement(TuningValue::maxTapDuration);
  EXPECT_EQ(pane.snapshot().maxTapDurationMs, 295);
  settings.defaults.set("maxTapDrift", 0.0612);
  pane.increment(TuningValue::maxTapDrift);
  EXPECT_EQ(pane.snapshot().maxTapDrift, 0.0712);
  settings.defaults.set("maxTapDrift", 0.145);
  pane.increment(TuningValue::maxTapDrift);
  EXPECT_EQ(pane.snapshot().maxTapDrift, 0.15) << "as far as the range goes";
}

TEST_F(TuningPaneTest, FiltersAreReset) {
  pane.setFilter({.device = "mouse", .outcome = "rejected", .newestFirst = false});
  EXPECT_EQ(view().taps.filters.title, "Filter (3 active)");
  pane.resetFilters();
  EXPECT_EQ(view().taps.filters.title, "Filter");
}

TEST_F(TuningPaneTest, SaysWhichSectionsHaveNoEffect) {
  EXPECT_EQ(view().tapNote.text, "");
  EXPECT_EQ(view().pinchNote.text, "");
  EXPECT_NE(view().centerNote.text, "") << "the centre click is off at first";
  settings.defaults.set("mouseTap3", false);
  settings.defaults.set("padTap3", false);
  EXPECT_NE(view().tapNote.text, "");
  EXPECT_EQ(view().tapNote.actionTitle, "Open Gestures");
  settings.defaults.set("padTap4", true);
  EXPECT_EQ(view().tapNote.text, "");
  settings.defaults.set("mousePinchZoom", false);
  EXPECT_EQ(view().pinchNote.actionTitle, "Turn On");
  pane.turnOnPinchZoom();
  EXPECT_EQ(view().pinchNote.text, "");
  settings.defaults.set("mouseClick1Center", true);
  EXPECT_EQ(view().centerNote.text, "");
}

}  // namespace
}  // namespace velotap
