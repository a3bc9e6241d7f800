#include "output/event_tap.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <optional>
#include <ostream>
#include <string>

#include "support/desktop.hpp"
#include "support/exact_clock.hpp"
#include "support/tracing_taps.hpp"

namespace velotap {
namespace {

using test::Lines;
using Type = MouseEventType;
using Button = ClickPolicy::Button;

constexpr const char* kBecomesPress = "type=25 button=2";
constexpr const char* kBecomesRelease = "type=26 button=2";
constexpr const char* kBecomesDrag = "type=27 button=2";

// Answers as the test says and writes down what it was asked.
class ScriptedPolicy final : public ClickPolicy {
 public:
  bool swallows = false;
  bool converts = false;
  std::optional<Button> held;
  Lines asked;

  void notePhysicalButtonDown() override { asked.emplace_back("note"); }
  [[nodiscard]] bool shouldSwallowSyntheticLeftClick(bool canIdentify, bool observed) override {
    asked.push_back(std::string("swallow? identify=") + (canIdentify ? "1" : "0") +
                    " observed=" + (observed ? "1" : "0"));
    return swallows;
  }
  [[nodiscard]] bool shouldConvertClick(Button button) override {
    asked.emplace_back(button == Button::left ? "convert left?" : "convert right?");
    if (converts) held = button;
    return converts;
  }
  [[nodiscard]] bool isConverting(Button button) override { return held == button; }
  bool endConversion(Button button) override {
    if (held != button) return false;
    held.reset();
    return true;
  }
  [[nodiscard]] bool abandonConversion() override {
    asked.emplace_back("abandon");
    return std::exchange(held, std::nullopt).has_value();
  }
  Lines take() { return std::exchange(asked, {}); }
};

// An event that no stream sends, with its changes in the order in which they were made.
class LooseEvent final : public TappedEvent {
 public:
  explicit LooseEvent(MouseEventType type, std::int64_t number = 1)
      : type_(type), number_(number) {}
  [[nodiscard]] MouseEventType type() const override { return type_; }
  [[nodiscard]] std::int64_t number() const override { return number_; }
  void setType(MouseEventType type) override {
    changes.push_back("type=" + std::to_string(static_cast<int>(type)));
    type_ = type;
  }
  void setButton(int button) override { changes.push_back("button=" + std::to_string(button)); }
  Lines changes;

 private:
  MouseEventType type_;
  std::int64_t number_;
};

class EventTapTest : public ::testing::Test, protected test::Desktop {
 protected:
  EventTapTest() {
    tap_.setLostHandler([this] { ++lost_; });
  }
  void startQuietly() {
    ASSERT_TRUE(tap_.start());
    tracing_.take();
    said.take();
  }
  std::string hardware(Type type, std::int64_t number) { return button(type, number, true); }
  std::string software(Type type, std::int64_t number) { return button(type, number, false); }
  void cannotInstall(TapLocation location) { taps.setInstallable(location, false); }
  void disable(TapLocation location, TapDisabled why = TapDisabled::byTimeout,
               bool revives = true) {
    taps.disable(location, why, revives);
  }

  test::TracingTaps tracing_{taps};
  test::ExactClock clock_;
  ScriptedPolicy policy_;
  EventTap tap_{tracing_, policy_, events, clock_, mainQueue, log};
  int lost_ = 0;
};

TEST_F(EventTapTest, StartsTheObservingTapAndThenTheConvertingOne) {
  EXPECT_TRUE(tap_.start());
  EXPECT_EQ(tracing_.take(),
            (Lines{"install hid", "install session", "enable hid", "enable session"}));
  EXPECT_EQ(tracing_.masks[TapLocation::hid], 0x1EU);
  EXPECT_EQ(tracing_.masks[TapLocation::session], 0xDEU);
  EXPECT_EQ(said.take(), Lines{"event tap active"});
}

TEST_F(EventTapTest, RunsWithoutTheObservingTap) {
  cannotInstall(TapLocation::hid);
  EXPECT_TRUE(tap_.start());
  EXPECT_EQ(tracing_.take(), (Lines{"install hid", "install session", "enable session"}));
  EXPECT_EQ(said.take(),
            (Lines{"physical HID event observer unavailable — synthetic-click suppression disabled",
                   "event tap active"}));
}

TEST_F(EventTapTest, WithoutTheConvertingTapNothingStaysInstalled) {
  cannotInstall(TapLocation::session);
  EXPECT_FALSE(tap_.start());
  EXPECT_EQ(tracing_.take(),
            (Lines{"install hid", "install session", "disable hid", "remove hid"}));
  EXPECT_EQ(taps.installed(TapLocation::hid), 0U);
  EXPECT_EQ(said.take(), Lines{"event tap creation FAILED — check Accessibility permission"});
}

TEST_F(EventTapTest, WithoutAnyTapBothFailuresAreTold) {
  cannotInstall(TapLocation::hid);
  cannotInstall(TapLocation::session);
  EXPECT_FALSE(tap_.start());
  EXPECT_EQ(said.take(),
            (Lines{"physical HID event observer unavailable — synthetic-click suppression disabled",
                   "event tap creation FAILED — check Accessibility permission"}));
}

TEST_F(EventTapTest, StoppingDisablesThenRemovesInOrder) {
  startQuietly();
  tap_.stop();
  EXPECT_EQ(tracing_.take(),
            (Lines{"disable hid", "disable session", "remove hid", "remove session"}));
  tracing_.take();
  tap_.stop();
  EXPECT_EQ(tracing_.take(), Lines{});
}

TEST_F(EventTapTest, StartingAgainBeginsWithAStop) {
  startQuietly();
  EXPECT_TRUE(tap_.start());
  EXPECT_EQ(tracing_.take(),
            (Lines{"disable hid", "disable session", "remove hid", "remove session", "install hid",
                   "install session", "enable hid", "enable session"}));
}

TEST_F(EventTapTest, APhysicalLeftPressIsNotedAtBothLevelsThenJudged) {
  startQuietly();
  EXPECT_EQ(hardware(Type::leftDown, 7), "pass");
  EXPECT_EQ(policy_.take(),
            (Lines{"note", "note", "swallow? identify=1 observed=1", "convert left?"}));
  EXPECT_EQ(said.take(), Lines{"left mouse down: HID=true"});
}

TEST_F(EventTapTest, ASyntheticLeftPressIsNeitherNotedNorConverted) {
  startQuietly();
  policy_.converts = true;
  EXPECT_EQ(software(Type::leftDown, 7), "pass");
  EXPECT_EQ(policy_.take(), Lines{"swallow? identify=1 observed=0"});
  EXPECT_EQ(said.take(), Lines{"left mouse down: HID=false"});
}

TEST_F(EventTapTest, APhysicalRightPressIsNotedAtBothLevelsAndNeverSwallowed) {
  startQuietly();
  policy_.swallows = true;
  EXPECT_EQ(hardware(Type::rightDown, 7), "pass");
  EXPECT_EQ(policy_.take(), (Lines{"note", "note", "convert right?"}));
  EXPECT_EQ(said.take(), Lines{"right mouse down: HID=true"});
}

TEST_F(EventTapTest, ASyntheticRightPressPassesBeforeAnythingElse) {
  startQuietly();
  policy_.converts = true;
  EXPECT_EQ(software(Type::rightDown, 7), "pass");
  EXPECT_EQ(policy_.take(), Lines{});
  EXPECT_EQ(said.take(), Lines{"right mouse down: HID=false"});
}

TEST_F(EventTapTest, WithoutTheObservingTapEveryPressCountsAsPhysical) {
  cannotInstall(TapLocation::hid);
  startQuietly();
  EXPECT_EQ(software(Type::leftDown, 7), "pass");
  EXPECT_EQ(policy_.take(), (Lines{"note", "swallow? identify=0 observed=0", "convert left?"}));
  EXPECT_EQ(software(Type::rightDown, 8), "pass");
  EXPECT_EQ(policy_.take(), (Lines{"note", "convert right?"}));
  EXPECT_EQ(said.take(), (Lines{"left mouse down: HID=false", "right mouse down: HID=false"}));
}

TEST_F(EventTapTest, ReleasesArePhysicalSightingsButNoNews) {
  startQuietly();
  EXPECT_EQ(hardware(Type::leftUp, 7), "pass");
  EXPECT_EQ(hardware(Type::rightUp, 8), "pass");
  EXPECT_EQ(policy_.take(), Lines{});
  EXPECT_TRUE(tap_.wasObservedAtHID(7));
  EXPECT_TRUE(tap_.wasObservedAtHID(8));
  EXPECT_FALSE(tap_.wasObservedAtHID(9));
}

TEST_F(EventTapTest, ASightingCountsForTwoSecondsInclusive) {
  startQuietly();
  hardware(Type::leftUp, 7);
  clock_.set(2);
  EXPECT_TRUE(tap_.wasObservedAtHID(7));
  clock_.set(std::nextafter(2.0, 3.0));
  EXPECT_FALSE(tap_.wasObservedAtHID(7));
}

struct ConversionCase {
  Button button;
  Type down, drag, up, otherDrag, otherUp;
  const char* line;
};

std::ostream& operator<<(std::ostream& out, const ConversionCase& c) {
  return out << c.line;
}

class EventTapConversion : public EventTapTest,
                           public ::testing::WithParamInterface<ConversionCase> {};

TEST_P(EventTapConversion, RewritesPressDragsAndRelease) {
  const ConversionCase& c = GetParam();
  startQuietly();
  policy_.converts = true;
  EXPECT_EQ(hardware(c.down, 7), kBecomesPress);
  EXPECT_EQ(said.take().back(), c.line);
  EXPECT_EQ(hardware(c.drag, 7), kBecomesDrag);
  EXPECT_EQ(hardware(c.drag, 7), kBecomesDrag);
  EXPECT_EQ(hardware(c.up, 7), kBecomesRelease);
  EXPECT_EQ(hardware(c.drag, 7), "pass");
  EXPECT_EQ(hardware(c.up, 7), "pass");
}

TEST_P(EventTapConversion, ChangesTheTypeBeforeTheButton) {
  const ConversionCase& c = GetParam();
  startQuietly();
  policy_.held = c.button;
  for (const Type type : {c.drag, c.up}) {
    LooseEvent event(type);
    EXPECT_EQ(tracing_.latest[TapLocation::session].event(event), TapAnswer::pass);
    ASSERT_EQ(event.changes.size(), 2U);
    EXPECT_EQ(event.changes[0].substr(0, 5), "type=");
    EXPECT_EQ(event.changes[1], "button=2");
  }
}

TEST_P(EventTapConversion, LeavesTheOtherButtonAlone) {
  const ConversionCase& c = GetParam();
  startQuietly();
  policy_.converts = true;
  EXPECT_EQ(hardware(c.down, 7), kBecomesPress);
  EXPECT_EQ(hardware(c.otherDrag, 8), "pass");
  EXPECT_EQ(hardware(c.otherUp, 8), "pass");
  EXPECT_EQ(policy_.held, c.button);
  EXPECT_EQ(hardware(c.up, 7), kBecomesRelease);
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, EventTapConversion,
    ::testing::Values(ConversionCase{Button::left, Type::leftDown, Type::leftDragged, Type::leftUp,
                                     Type::rightDragged, Type::rightUp,
                                     "converted left click to middle click"},
                      ConversionCase{Button::right, Type::rightDown, Type::rightDragged,
                                     Type::rightUp, Type::leftDragged, Type::leftUp,
                                     "converted right click to middle click"}));

TEST_F(EventTapTest, OtherEventsPass) {
  startQuietly();
  policy_.held = Button::left;
  for (const Type type : {Type::otherDown, Type::otherUp, Type::otherDragged, static_cast<Type>(5),
                          static_cast<Type>(22), static_cast<Type>(65)}) {
    LooseEvent event(type);
    EXPECT_EQ(tracing_.latest[TapLocation::session].event(event), TapAnswer::pass);
    EXPECT_EQ(event.changes, Lines{});
  }
  EXPECT_EQ(policy_.take(), Lines{});
}

TEST_F(EventTapTest, OnlyButtonsAreSightings) {
  startQuietly();
  for (const Type type : {Type::leftDragged, Type::rightDragged, Type::otherDown,
                          static_cast<Type>(5), static_cast<Type>(22), static_cast<Type>(65)}) {
    LooseEvent event(type, 9);
    EXPECT_EQ(tracing_.latest[TapLocation::hid].event(event), TapAnswer::pass);
  }
  EXPECT_FALSE(tap_.wasObservedAtHID(9));
  EXPECT_EQ(policy_.take(), Lines{});
}

TEST_F(EventTapTest, ASwallowedPressTakesItsReleaseWithIt) {
  startQuietly();
  policy_.swallows = true;
  EXPECT_EQ(software(Type::leftDown, 7), "drop");
  EXPECT_EQ(said.take(), (Lines{"left mouse down: HID=false",
                                "swallowed synthetic left click after trackpad tap"}));
  EXPECT_EQ(software(Type::leftUp, 8), "pass") << "the release of another press";
  EXPECT_EQ(software(Type::leftUp, 7), "drop");
  EXPECT_EQ(software(Type::leftUp, 7), "pass") << "only once";
}

TEST_F(EventTapTest, ASwallowedReleaseMayComeASecondLater) {
  startQuietly();
  policy_.swallows = true;
  software(Type::leftDown, 7);
  clock_.advance(1.0);
  EXPECT_EQ(software(Type::leftUp, 7), "drop");
}

TEST_F(EventTapTest, AReleaseLaterThanASecondPasses) {
  startQuietly();
  policy_.swallows = true;
  software(Type::leftDown, 7);
  clock_.set(std::nextafter(1.0, 2.0));
  EXPECT_EQ(software(Type::leftUp, 7), "pass");
  clock_.set(0.5);
  EXPECT_EQ(software(Type::leftUp, 7), "pass") << "the record is gone";
}

TEST_F(EventTapTest, AnExpiredRecordDoesNotHideTheReleaseOfAConversion) {
  startQuietly();
  policy_.swallows = true;
  software(Type::leftDown, 7);
  policy_.swallows = false;
  policy_.converts = true;
  EXPECT_EQ(hardware(Type::leftDown, 8), kBecomesPress);
  clock_.advance(1.5);
  EXPECT_EQ(hardware(Type::leftUp, 8), kBecomesRelease);
}

TEST_F(EventTapTest, ASwallowedPressIsNotConverted) {
  startQuietly();
  policy_.swallows = true;
  policy_.converts = true;
  EXPECT_EQ(hardware(Type::leftDown, 7), "drop");
  EXPECT_EQ(policy_.held, std::nullopt);
}

TEST_F(EventTapTest, StoppingForgetsWhatTheTapsSaw) {
  startQuietly();
  policy_.swallows = true;
  hardware(Type::leftUp, 7);
  software(Type::leftDown, 8);
  EXPECT_TRUE(tap_.start());
  EXPECT_FALSE(tap_.wasObservedAtHID(7));
  EXPECT_EQ(software(Type::leftUp, 8), "pass");
}

TEST_F(EventTapTest, ADisabledObservingTapIsRevivedAndStartsAfresh) {
  for (const TapDisabled why : {TapDisabled::byTimeout, TapDisabled::byUserInput}) {
    startQuietly();
    hardware(Type::leftUp, 7);
    disable(TapLocation::hid, why);
    EXPECT_EQ(tracing_.take(), Lines{"enable hid"});
    EXPECT_FALSE(tap_.wasObservedAtHID(7));
    EXPECT_EQ(said.take(), Lines{});
    EXPECT_EQ(lost_, 0);
  }
}

TEST_F(EventTapTest, ASwallowedPressOutlivesARevivedObservingTap) {
  startQuietly();
  policy_.swallows = true;
  software(Type::leftDown, 7);
  disable(TapLocation::hid);
  EXPECT_EQ(software(Type::leftUp, 7), "drop");
}

TEST_F(EventTapTest, AnObservingTapThatStaysDisabledIsGivenUpAlone) {
  startQuietly();
  policy_.swallows = true;
  hardware(Type::leftUp, 5);
  software(Type::leftDown, 7);
  said.take();
  policy_.take();
  disable(TapLocation::hid, TapDisabled::byTimeout, false);
  EXPECT_EQ(tracing_.take(), (Lines{"enable hid", "disable hid", "remove hid"}));
  EXPECT_EQ(said.take(),
            Lines{"physical HID event observer stopped — synthetic-click suppression disabled"});
  EXPECT_EQ(lost_, 0);
  EXPECT_EQ(software(Type::leftUp, 7), "pass") << "the swallowed press is forgotten";
  policy_.swallows = false;
  policy_.converts = true;
  EXPECT_EQ(software(Type::leftDown, 8), kBecomesPress) << "conversion goes on";
  EXPECT_EQ(policy_.take(), (Lines{"note", "swallow? identify=0 observed=0", "convert left?"}));
}

TEST_F(EventTapTest, GivingUpTheObservingTapIsPossibleWithoutOne) {
  cannotInstall(TapLocation::hid);
  startQuietly();
  tap_.disablePhysicalObservation();
  EXPECT_EQ(tracing_.take(), Lines{});
  EXPECT_EQ(said.take(),
            Lines{"physical HID event observer stopped — synthetic-click suppression disabled"});
}

TEST_F(EventTapTest, ADisabledConvertingTapReleasesAHeldButtonBeforeItIsRevived) {
  for (const TapDisabled why : {TapDisabled::byTimeout, TapDisabled::byUserInput}) {
    startQuietly();
    policy_.converts = true;
    hardware(Type::leftDown, 7);
    policy_.take();
    Lines before = {"nothing was released"};
    const Observation releasing =
        events.observePosts([&](const PostedEvent&) { before = tracing_.take(); });
    disable(TapLocation::session, why);
    EXPECT_EQ(before, Lines{}) << "released first, revived then";
    EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
    EXPECT_EQ(policy_.take(), Lines{"abandon"});
    EXPECT_EQ(tracing_.take(), Lines{"enable session"});
    EXPECT_EQ(lost_, 0);
    EXPECT_EQ(hardware(Type::leftUp, 7), "pass") << "the release was already made";
  }
}

TEST_F(EventTapTest, ADisabledConvertingTapWithNothingHeldPostsNothing) {
  startQuietly();
  policy_.swallows = true;
  software(Type::leftDown, 7);
  disable(TapLocation::session);
  EXPECT_EQ(posted.take(), Lines{});
  EXPECT_EQ(software(Type::leftUp, 7), "pass") << "the swallowed press is forgotten";
}

TEST_F(EventTapTest, AConvertingTapThatStaysDisabledMeansTheListenersAreLost) {
  startQuietly();
  policy_.converts = true;
  hardware(Type::leftDown, 7);
  disable(TapLocation::session, TapDisabled::byUserInput, false);
  EXPECT_EQ(posted.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_EQ(lost_, 1);
}

TEST_F(EventTapTest, TheLostHandlerMayRemoveTheTapThatCallsIt) {
  startQuietly();
  tap_.setLostHandler([this] { tap_.stop(); });
  disable(TapLocation::session, TapDisabled::byTimeout, false);
  EXPECT_EQ(taps.installed(TapLocation::session), 0U);
  EXPECT_EQ(taps.installed(TapLocation::hid), 0U);
}

TEST_F(EventTapTest, WithoutALostHandlerALossIsSurvived) {
  startQuietly();
  tap_.setLostHandler({});
  disable(TapLocation::session, TapDisabled::byTimeout, false);
  EXPECT_EQ(lost_, 0);
}

TEST_F(EventTapTest, SaysNothingWhenNobodyAsked) {
  log.setEnabled(false);
  EXPECT_TRUE(tap_.start());
  policy_.swallows = true;
  hardware(Type::leftDown, 1);
  hardware(Type::rightDown, 2);
  tap_.disablePhysicalObservation();
  EXPECT_EQ(said.take(), Lines{});
}

using EventTapDeathTest = EventTapTest;

TEST_F(EventTapDeathTest, CallbacksOutsideTheMainThreadEndTheProcess) {
  startQuietly();
  const auto elsewhere = [this](const std::function<void()>& callback) {
    mainQueue.runElsewhere(callback);
  };
  const char* why = "Velotap/EventTap called outside the main thread";
  EXPECT_DEATH(elsewhere([&] { software(Type::leftDown, 1); }), why);
  EXPECT_DEATH(elsewhere([&] { hardware(Type::leftDown, 1); }), why);
  EXPECT_DEATH(elsewhere([&] { disable(TapLocation::session); }), why);
  EXPECT_DEATH(elsewhere([&] { disable(TapLocation::hid); }), why);
}

}  // namespace
}  // namespace velotap
