#include "settings/gestures_pane.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "settings_fixture.hpp"

namespace velotap {
namespace {

using test::english;
using Keys = std::vector<std::string>;

class GesturesPaneTest : public ::testing::Test {
 protected:
  [[nodiscard]] Keys shown() const {
    Keys keys;
    for (const auto& section : view().sections) {
      for (const auto& row : section.rows) keys.push_back(row.key);
    }
    return keys;
  }
  [[nodiscard]] GesturesView view() const { return pane.view(facts, english()); }
  [[nodiscard]] ExplainedTriggerToggle row(std::string_view key) const {
    for (const auto& section : view().sections) {
      for (const auto& each : section.rows) {
        if (each.key == key) return each;
      }
    }
    return {};
  }
  [[nodiscard]] bool on(std::string_view key) { return settings.defaults.boolean(key); }

  test::StoredSettings settings;
  GestureDeviceSelection selection{settings.defaults};
  Keys enabled;
  GesturesPane pane{settings.defaults, selection,
                    [this](std::string_view key) { enabled.emplace_back(key); }};
  GestureFacts facts;
};

TEST_F(GesturesPaneTest, ListsTheDevicesTriggersInTwoSections) {
  const GesturesView mouse = view();
  ASSERT_EQ(mouse.sections.size(), 2U);
  EXPECT_EQ(mouse.sections[0].title, "Middle click");
  EXPECT_EQ(mouse.sections[1].title, "More gestures");
  EXPECT_EQ(shown(), (Keys{"mouseClick1Center", "mouseClick2", "mouseClick3", "mouseTap3",
                           "mousePinchZoom", "mouseRotate", "mouseSwipe3Nav"}));
  EXPECT_EQ(mouse.summary, "3 of 7 gestures on");
}

TEST_F(GesturesPaneTest, ChangingTheDeviceChangesTheRowsAndIsRemembered) {
  pane.setDevice(GestureDevice::trackpad);
  EXPECT_EQ(shown(), (Keys{"padClick3", "padTap3", "padTap4"}));
  EXPECT_EQ(view().sections.size(), 1U);
  EXPECT_EQ(view().summary, "2 of 3 gestures on");
  EXPECT_EQ(settings.defaults.text("settings.gestureDevice"), "trackpad");
}

TEST_F(GesturesPaneTest, OpensOneExplanationAtATime) {
  pane.toggleExplanation("mouseTap3");
  EXPECT_TRUE(row("mouseTap3").explained);
  EXPECT_NE(row("mouseTap3").detail, "");
  EXPECT_EQ(row("mouseTap3").explainLabel, "Hide Explanation");
  EXPECT_EQ(row("mouseTap3").explainSymbol, "info.circle.fill");
  pane.toggleExplanation("mouseRotate");
  EXPECT_FALSE(row("mouseTap3").explained);
  EXPECT_EQ(row("mouseTap3").explainLabel, "Explain Tap with three fingers");
  EXPECT_EQ(row("mouseTap3").explainSymbol, "info.circle");
  EXPECT_EQ(row("mouseTap3").detail, "");
  EXPECT_TRUE(row("mouseRotate").explained);
  pane.toggleExplanation("mouseRotate");
  EXPECT_FALSE(row("mouseRotate").explained);
}

TEST_F(GesturesPaneTest, PutsTheExplainedTriggerBack) {
  pane.resetSelectedGesture();
  pane.setTrigger("mouseTap3", false);
  EXPECT_TRUE(row("mouseTap3").modified);
  EXPECT_EQ(row("mouseTap3").resetLabel, "");
  pane.toggleExplanation("mouseTap3");
  EXPECT_EQ(row("mouseTap3").resetLabel, "Reset Tap with three fingers");
  pane.resetSelectedGesture();
  EXPECT_TRUE(on("mouseTap3"));
  EXPECT_FALSE(row("mouseTap3").modified);
}

TEST_F(GesturesPaneTest, TellsOfATriggerThatWasSwitchedOn) {
  pane.setTrigger("mouseRotate", true);
  pane.setTrigger("mouseRotate", true);
  pane.setTrigger("mouseTap3", false);
  EXPECT_EQ(enabled, (Keys{"mouseRotate"}));
}

TEST_F(GesturesPaneTest, FiltersByTextSectionStateAndChange) {
  pane.setFilter({.query = "  THREE "});
  EXPECT_EQ(shown(), (Keys{"mouseClick3", "mouseTap3", "mouseSwipe3Nav"}));
  pane.setFilter({.section = GestureSectionFilter::more});
  EXPECT_EQ(shown(), (Keys{"mousePinchZoom", "mouseRotate", "mouseSwipe3Nav"}));
  pane.setFilter({.section = GestureSectionFilter::middle, .enabledOnly = true});
  EXPECT_EQ(shown(), (Keys{"mouseClick3", "mouseTap3"}));
  pane.setTrigger("mouseClick2", true);
  pane.setFilter({.modifiedOnly = true});
  EXPECT_EQ(shown(), (Keys{"mouseClick2"}));
}

TEST_F(GesturesPaneTest, CountsTheFiltersThatAreActive) {
  EXPECT_EQ(GestureFilter{}.activeCount(), 0);
  EXPECT_EQ((GestureFilter{.query = " \t"}.activeCount()), 0);
  const GestureFilter all{.query = "a",
                          .section = GestureSectionFilter::more,
                          .enabledOnly = true,
                          .modifiedOnly = true};
  EXPECT_EQ(all.activeCount(), 4);
  pane.setFilter(all);
  EXPECT_EQ(view().filters.title, "Filter (4 active)");
  pane.resetFilters();
  EXPECT_EQ(pane.filter().activeCount(), 0);
  EXPECT_EQ(pane.filter().query, "");
}

TEST_F(GesturesPaneTest, OffersAllGesturesWhenNothingIsLeft) {
  EXPECT_EQ(view().noMatches, "");
  pane.setFilter({.modifiedOnly = true});
  EXPECT_TRUE(view().sections.empty());
  EXPECT_EQ(view().noMatches, "No matching gestures");
  EXPECT_EQ(view().showAll, "Show All Gestures");
}

TEST_F(GesturesPaneTest, UndoesADisablingButForWhatWasSwitchedOnSince) {
  pane.setTrigger("mouseClick2", true);
  EXPECT_TRUE(view().canDisable);
  EXPECT_EQ(view().undoTitle, "");
  pane.disableAll();
  for (const auto& key : shown()) EXPECT_FALSE(on(key)) << key;
  EXPECT_TRUE(on("padTap3"));
  EXPECT_FALSE(view().canDisable);
  EXPECT_EQ(view().undoTitle, "Undo");
  pane.setTrigger("mouseTap3", true);
  pane.setTrigger("mouseRotate", true);
  pane.undo();
  EXPECT_TRUE(on("mouseClick2"));
  EXPECT_TRUE(on("mouseClick3"));
  EXPECT_TRUE(on("mousePinchZoom"));
  EXPECT_TRUE(on("mouseTap3"));
  EXPECT_TRUE(on("mouseRotate"));
  EXPECT_FALSE(on("mouseClick1Center"));
  EXPECT_FALSE(pane.canUndo());
  pane.undo();
}

TEST_F(GesturesPaneTest, RestoresTheFactoryValuesOfTheDevice) {
  EXPECT_FALSE(view().canRestore);
  pane.setTrigger("mouseTap3", false);
  pane.setTrigger("mouseRotate", true);
  pane.setTrigger("padTap4", true);
  EXPECT_TRUE(view().canRestore);
  pane.restoreDeviceDefaults();
  EXPECT_TRUE(on("mouseTap3"));
  EXPECT_FALSE(on("mouseRotate"));
  EXPECT_TRUE(on("padTap4"));
  pane.setDevice(GestureDevice::trackpad);
  pane.undo();
  EXPECT_FALSE(on("mouseTap3"));
  EXPECT_TRUE(on("mouseRotate"));
}

TEST_F(GesturesPaneTest, ALaterBulkChangeReplacesTheUndo) {
  pane.disableAll();
  pane.restoreDeviceDefaults();
  pane.undo();
  EXPECT_FALSE(on("mouseTap3"));
}

TEST_F(GesturesPaneTest, SaysWhyATriggerCannotAct) {
  EXPECT_FALSE(row("mouseTap3").note);
  facts.listenersRunning = false;
  EXPECT_EQ(row("mouseTap3").note->action, NoteAction::startListeners);
  EXPECT_EQ(row("mouseTap3").note->actionTitle, "Try Again");
  facts.accessibilityGranted = false;
  EXPECT_EQ(row("mouseTap3").note->action, NoteAction::openAccessibilitySettings);
  EXPECT_EQ(row("mouseTap3").note->actionTitle, "Open System Settings");
  EXPECT_EQ(row("mouseTap3").note->symbol, "info.circle");
  facts.permissionIsSetUpHere = true;
  EXPECT_EQ(row("mouseTap3").note->actionTitle, "Accessibility Setup…");
  facts.enabled = false;
  EXPECT_EQ(row("mouseTap3").note->action, NoteAction::showGeneral);
  EXPECT_FALSE(row("mouseRotate").note) << "a trigger that is off needs no excuse";
}

TEST_F(GesturesPaneTest, LeavesThreeFingersToADesktopThatAnswersThem) {
  pane.setDevice(GestureDevice::trackpad);
  pane.setTrigger("padTap4", true);
  EXPECT_FALSE(view().trackpadMode) << "a desktop that never clicks leaves no choice";
  facts.desktopClicks = DesktopClicks{.threeFingerTap = true};
  EXPECT_TRUE(row("padTap3").note);
  EXPECT_EQ(row("padTap3").note->actionTitle, "");
  EXPECT_FALSE(row("padClick3").note);
  EXPECT_FALSE(row("padTap4").note);
  facts.desktopClicks = DesktopClicks{.threeFingerClick = true};
  EXPECT_FALSE(row("padTap3").note);
  EXPECT_TRUE(row("padClick3").note);
  pane.setDevice(GestureDevice::mouse);
  EXPECT_FALSE(row("mouseTap3").note);
  EXPECT_FALSE(view().trackpadMode);
}

TEST_F(GesturesPaneTest, LetsAPersonChooseWhoAnswersThreeFingers) {
  pane.setDevice(GestureDevice::trackpad);
  facts.desktopClicks = DesktopClicks{};
  ASSERT_TRUE(view().trackpadMode);
  EXPECT_EQ(view().trackpadMode->choices.size(), 3U);
  EXPECT_EQ(view().trackpadMode->mode, TrackpadMode::automatic);
  const auto note = [this](TrackpadMode mode, bool desktopClicks) {
    pane.setTrackpadMode(mode);
    facts.desktopClicks = DesktopClicks{.threeFingerTap = desktopClicks};
    EXPECT_EQ(view().trackpadMode->mode, mode);
    EXPECT_EQ(settings.config.trackpadMode(), mode);
    return view().trackpadMode->note;
  };
  std::set<std::string> notes;
  for (const auto mode : {TrackpadMode::native, TrackpadMode::post, TrackpadMode::automatic}) {
    for (const bool desktopClicks : {false, true}) notes.insert(note(mode, desktopClicks));
  }
  EXPECT_EQ(notes.size(), 6U) << "each case has a sentence of its own";
  pane.setTrackpadMode(TrackpadMode::post);
  EXPECT_FALSE(row("padTap3").note);
  pane.setTrackpadMode(TrackpadMode::native);
  facts.desktopClicks = DesktopClicks{};
  EXPECT_TRUE(row("padTap3").note);
}

TEST_F(GesturesPaneTest, SaysWhetherTheDeviceIsThere) {
  EXPECT_EQ(view().connection.text, "Not connected");
  facts.connectedDevices = {DeviceClass::magicMouse};
  EXPECT_EQ(view().connection.text, "Connected");
  facts.mouseAvailable = false;
  EXPECT_EQ(view().connection.text, "Not available");
}

TEST_F(GesturesPaneTest, AsksBeforeDisablingAll) {
  const Confirmation question = GesturesPane::disableQuestion(english());
  EXPECT_EQ(question.title, "Turn off all gestures of this device?");
  EXPECT_EQ(question.confirm, "Turn Off");
  EXPECT_EQ(question.cancel, "Cancel");
}

}  // namespace
}  // namespace velotap
