#include "settings/gesture_practice.hpp"

#include <gtest/gtest.h>

#include "config/settings_table.hpp"
#include "settings_fixture.hpp"

namespace velotap {
namespace {

using test::english;

PracticeSurfaceFacts shown(Rect rectangle = {10, 20, 30, 40}) {
  PracticeSurfaceFacts facts;
  facts.windowIsKey = true;
  facts.windowIsVisible = true;
  facts.hasScreen = true;
  facts.visibleRectangle = rectangle;
  return facts;
}

TEST(PracticeRectangle, NeedsAWindowThatClicksReach) {
  EXPECT_EQ(practiceRectangle(shown()), (Rect{10, 20, 30, 40}));
  EXPECT_FALSE(practiceRectangle({}));
  for (const auto fact :
       {&PracticeSurfaceFacts::windowIsKey, &PracticeSurfaceFacts::windowIsVisible,
        &PracticeSurfaceFacts::hasScreen}) {
    PracticeSurfaceFacts facts = shown();
    facts.*fact = false;
    EXPECT_FALSE(practiceRectangle(facts));
  }
  for (const auto fact :
       {&PracticeSurfaceFacts::windowIsMiniaturised, &PracticeSurfaceFacts::windowIgnoresMouse,
        &PracticeSurfaceFacts::windowIsOccluded, &PracticeSurfaceFacts::surfaceIsHidden}) {
    PracticeSurfaceFacts facts = shown();
    facts.*fact = true;
    EXPECT_FALSE(practiceRectangle(facts));
  }
}

TEST(PracticeTracking, MiniaturisingClearsTheTargetAndRestoringSetsIt) {
  PracticeTarget target;
  PracticeTracking surface(target);
  surface.refreshTarget(shown());
  EXPECT_TRUE(target.contains({15, 25}));
  PracticeSurfaceFacts facts = shown();
  facts.windowIsMiniaturised = true;
  surface.refreshTarget(facts);
  EXPECT_FALSE(target.contains({15, 25}));
  surface.refreshTarget(shown());
  EXPECT_TRUE(target.contains({15, 25}));
  surface.refreshTarget(shown({100, 100, 30, 40}));
  EXPECT_FALSE(target.contains({15, 25}));
  surface.stop();
  EXPECT_FALSE(target.contains({105, 105}));
}

TEST(PracticeTracking, TheSurfaceThatPublishedLastOwnsTheTarget) {
  PracticeTarget target;
  PracticeTracking owner(target);
  {
    PracticeTracking other(target);
    other.refreshTarget(shown());
    owner.refreshTarget(shown({100, 100, 30, 40}));
  }
  EXPECT_TRUE(target.contains({105, 105}));
}

TEST(PracticeTracking, ASurfaceThatIsGoneLeavesNoTarget) {
  PracticeTarget target;
  { PracticeTracking(target).refreshTarget(shown()); }
  EXPECT_FALSE(target.contains({15, 25}));
}

TEST(GesturePractice, StartsWithAHint) {
  const PracticeView view = GesturePractice().view(english());
  EXPECT_EQ(view.title, "Try a middle click");
  EXPECT_EQ(view.symbol, "cursorarrow");
  EXPECT_NE(view.outcome, "");
  EXPECT_EQ(view.middleCount, "");
  EXPECT_FALSE(view.canTryAgain);
}

TEST(GesturePractice, CountsMiddleClicks) {
  GesturePractice practice;
  practice.mouseDown(2);
  EXPECT_EQ(practice.view(english()).symbol, "cursorarrow.click");
  practice.mouseUp(2);
  practice.mouseDown(2);
  practice.mouseUp(2);
  const PracticeView view = practice.view(english());
  EXPECT_EQ(view.symbol, "cursorarrow");
  EXPECT_EQ(view.outcome, "Middle click received");
  EXPECT_EQ(view.outcomeSymbol, "checkmark.circle");
  EXPECT_EQ(view.middleCount, "Middle clicks: 2");
  EXPECT_EQ(view.help, "");
  EXPECT_EQ(practice.otherClicks(), 0);
}

TEST(GesturePractice, ARightClickIsAnotherClick) {
  GesturePractice practice;
  for (const int button : {0, 1, 3, 99}) {
    practice.mouseDown(button);
    practice.mouseUp(button);
  }
  EXPECT_EQ(practice.otherClicks(), 4);
  EXPECT_EQ(practice.middleClicks(), 0);
  EXPECT_EQ(practice.last(), GesturePractice::Outcome::other);
  const PracticeView view = practice.view(english());
  EXPECT_EQ(view.outcome, "Other clicks: 4");
  EXPECT_NE(view.help, "");
  EXPECT_EQ(view.symbol, "cursorarrow");
}

TEST(GesturePractice, ShowsThatAnyButtonIsDown) {
  GesturePractice practice;
  practice.mouseDown(0);
  practice.mouseDown(2);
  practice.mouseUp(0);
  EXPECT_EQ(practice.view(english()).symbol, "cursorarrow.click");
  practice.mouseUp(2);
  EXPECT_EQ(practice.view(english()).symbol, "cursorarrow");
}

TEST(GesturePractice, StartsAgain) {
  GesturePractice practice;
  practice.mouseDown(2);
  EXPECT_TRUE(practice.view(english()).canTryAgain);
  practice.reset();
  EXPECT_EQ(practice.middleClicks(), 0);
  EXPECT_EQ(practice.last(), GesturePractice::Outcome::none);
}

TEST(GesturePreview, ShowsTheGestureOfEachTrigger) {
  using Kind = GesturePreview::Kind;
  constexpr auto kMouse = GestureDevice::mouse;
  constexpr auto kPad = GestureDevice::trackpad;
  EXPECT_EQ(gesturePreview("mouseClick1Center"), (GesturePreview{Kind::click, 1, true, kMouse}));
  EXPECT_EQ(gesturePreview("mouseClick2"), (GesturePreview{Kind::click, 2, false, kMouse}));
  EXPECT_EQ(gesturePreview("mouseTap3"), (GesturePreview{Kind::tap, 3, false, kMouse}));
  EXPECT_EQ(gesturePreview("padClick3"), (GesturePreview{Kind::click, 3, false, kPad}));
  EXPECT_EQ(gesturePreview("padTap4"), (GesturePreview{Kind::tap, 4, false, kPad}));
  EXPECT_EQ(gesturePreview("mousePinchZoom"), (GesturePreview{Kind::pinch, 2, false, kMouse}));
  EXPECT_EQ(gesturePreview("mouseRotate"), (GesturePreview{Kind::rotate, 2, false, kMouse}));
  EXPECT_EQ(gesturePreview("mouseSwipe3Nav"), (GesturePreview{Kind::swipe, 3, false, kMouse}));
}

}  // namespace
}  // namespace velotap
