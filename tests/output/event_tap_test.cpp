#include "output/event_tap.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

#include "support/fake_ports.hpp"
#include "support/fake_taps.hpp"
#include "support/recording_events.hpp"
#include "support/virtual_time.hpp"

namespace velotap {
namespace {

using Lines = std::vector<std::string>;
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

class EventTapTest : public ::testing::Test {
 protected:
  EventTapTest() {
    tap_.setLostHandler([this] { ++lost_; });
  }
  void startQuietly() {
    ASSERT_TRUE(tap_.start());
    taps_.calls.clear();
    log_.take();
  }
  std::string hardware(Type type, std::int64_t number) { return taps_.button(type, number, true); }
  std::string software(Type type, std::int64_t number) { return taps_.button(type, number, false); }

  test::ManualClock clock_;
  test::VirtualQueue queue_{clock_};
  test::FakeTaps taps_;
  test::RecordingEvents events_;
  test::RecordingLog log_;
  ScriptedPolicy policy_;
  EventTap tap_{taps_, policy_, events_, clock_, queue_, log_};
  int lost_ = 0;
};

TEST_F(EventTapTest, StartsTheObservingTapAndThenTheConvertingOne) {
  EXPECT_TRUE(tap_.start());
  EXPECT_EQ(taps_.calls, (Lines{"install hid", "install session", "enable hid", "enable session"}));
  EXPECT_EQ(taps_.hid->mask, 0x1EU);
  EXPECT_EQ(taps_.session->mask, 0xDEU);
  EXPECT_TRUE(taps_.hid->enabled);
  EXPECT_TRUE(taps_.session->enabled);
  EXPECT_EQ(log_.take(), Lines{"event tap active"});
}

TEST_F(EventTapTest, RunsWithoutTheObservingTap) {
  taps_.hidFails = true;
  EXPECT_TRUE(tap_.start());
  EXPECT_EQ(taps_.calls, (Lines{"install hid", "install session", "enable session"}));
  EXPECT_EQ(log_.take(),
            (Lines{"physical HID event observer unavailable — synthetic-click suppression disabled",
                   "event tap active"}));
}

TEST_F(EventTapTest, WithoutTheConvertingTapNothingStaysInstalled) {
  taps_.sessionFails = true;
  EXPECT_FALSE(tap_.start());
  EXPECT_EQ(taps_.calls, (Lines{"install hid", "install session", "disable hid", "remove hid"}));
  EXPECT_EQ(taps_.hid, nullptr);
  EXPECT_EQ(log_.take(), Lines{"event tap creation FAILED — check Accessibility permission"});
}

TEST_F(EventTapTest, WithoutAnyTapBothFailuresAreTold) {
  taps_.hidFails = true;
  taps_.sessionFails = true;
  EXPECT_FALSE(tap_.start());
  EXPECT_EQ(log_.take(),
            (Lines{"physical HID event observer unavailable — synthetic-click suppression disabled",
                   "event tap creation FAILED — check Accessibility permission"}));
}

TEST_F(EventTapTest, StoppingDisablesThenRemovesInOrder) {
  startQuietly();
  tap_.stop();
  EXPECT_EQ(taps_.calls, (Lines{"disable hid", "disable session", "remove hid", "remove session"}));
  taps_.calls.clear();
  tap_.stop();
  EXPECT_EQ(taps_.calls, Lines{});
}

TEST_F(EventTapTest, StartingAgainBeginsWithAStop) {
  startQuietly();
  EXPECT_TRUE(tap_.start());
  EXPECT_EQ(taps_.calls, (Lines{"disable hid", "disable session", "remove hid", "remove session",
                                "install hid", "install session", "enable hid", "enable session"}));
}

TEST_F(EventTapTest, APhysicalLeftPressIsNotedAtBothLevelsThenJudged) {
  startQuietly();
  EXPECT_EQ(hardware(Type::leftDown, 7), "pass");
  EXPECT_EQ(policy_.take(),
            (Lines{"note", "note", "swallow? identify=1 observed=1", "convert left?"}));
  EXPECT_EQ(log_.take(), Lines{"left mouse down: HID=true"});
}

TEST_F(EventTapTest, ASyntheticLeftPressIsNeitherNotedNorConverted) {
  startQuietly();
  policy_.converts = true;
  EXPECT_EQ(software(Type::leftDown, 7), "pass");
  EXPECT_EQ(policy_.take(), Lines{"swallow? identify=1 observed=0"});
  EXPECT_EQ(log_.take(), Lines{"left mouse down: HID=false"});
}

TEST_F(EventTapTest, APhysicalRightPressIsNotedAtBothLevelsAndNeverSwallowed) {
  startQuietly();
  policy_.swallows = true;
  EXPECT_EQ(hardware(Type::rightDown, 7), "pass");
  EXPECT_EQ(policy_.take(), (Lines{"note", "note", "convert right?"}));
  EXPECT_EQ(log_.take(), Lines{"right mouse down: HID=true"});
}

TEST_F(EventTapTest, ASyntheticRightPressPassesBeforeAnythingElse) {
  startQuietly();
  policy_.converts = true;
  EXPECT_EQ(software(Type::rightDown, 7), "pass");
  EXPECT_EQ(policy_.take(), Lines{});
  EXPECT_EQ(log_.take(), Lines{"right mouse down: HID=false"});
}

TEST_F(EventTapTest, WithoutTheObservingTapEveryPressCountsAsPhysical) {
  taps_.hidFails = true;
  startQuietly();
  EXPECT_EQ(software(Type::leftDown, 7), "pass");
  EXPECT_EQ(policy_.take(), (Lines{"note", "swallow? identify=0 observed=0", "convert left?"}));
  EXPECT_EQ(software(Type::rightDown, 8), "pass");
  EXPECT_EQ(policy_.take(), (Lines{"note", "convert right?"}));
  EXPECT_EQ(log_.take(), (Lines{"left mouse down: HID=false", "right mouse down: HID=false"}));
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
  clock_.set(1002);
  EXPECT_TRUE(tap_.wasObservedAtHID(7));
  clock_.set(std::nextafter(1002.0, 1003.0));
  EXPECT_FALSE(tap_.wasObservedAtHID(7));
}

struct ConversionCase {
  Button button;
  Type down, drag, up, otherDrag, otherUp;
  const char* line;
};

class EventTapConversion : public EventTapTest,
                           public ::testing::WithParamInterface<ConversionCase> {};

TEST_P(EventTapConversion, RewritesPressDragsAndReleaseTypeFirst) {
  const ConversionCase& c = GetParam();
  startQuietly();
  policy_.converts = true;
  EXPECT_EQ(hardware(c.down, 7), kBecomesPress);
  EXPECT_EQ(log_.take().back(), c.line);
  EXPECT_EQ(hardware(c.drag, 7), kBecomesDrag);
  EXPECT_EQ(hardware(c.drag, 7), kBecomesDrag);
  EXPECT_EQ(hardware(c.up, 7), kBecomesRelease);
  EXPECT_EQ(hardware(c.drag, 7), "pass");
  EXPECT_EQ(hardware(c.up, 7), "pass");
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
    test::FakeEvent event(type, 1);
    EXPECT_EQ(taps_.session->callbacks.event(event), TapAnswer::pass);
    EXPECT_EQ(event.changes, "");
  }
  EXPECT_EQ(policy_.take(), Lines{});
}

TEST_F(EventTapTest, OnlyButtonsAreSightings) {
  startQuietly();
  for (const Type type : {Type::leftDragged, Type::rightDragged, Type::otherDown,
                          static_cast<Type>(5), static_cast<Type>(22), static_cast<Type>(65)}) {
    test::FakeEvent event(type, 9);
    EXPECT_EQ(taps_.hid->callbacks.event(event), TapAnswer::pass);
  }
  EXPECT_FALSE(tap_.wasObservedAtHID(9));
  EXPECT_EQ(policy_.take(), Lines{});
}

TEST_F(EventTapTest, ASwallowedPressTakesItsReleaseWithIt) {
  startQuietly();
  policy_.swallows = true;
  EXPECT_EQ(software(Type::leftDown, 7), "drop");
  EXPECT_EQ(log_.take(), (Lines{"left mouse down: HID=false",
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
  clock_.set(std::nextafter(1001.0, 1002.0));
  EXPECT_EQ(software(Type::leftUp, 7), "pass");
  clock_.set(1000.5);
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
    test::FakeTaps::disable(taps_.hid, why);
    EXPECT_EQ(taps_.calls, Lines{"enable hid"});
    EXPECT_TRUE(taps_.hid->enabled);
    EXPECT_FALSE(tap_.wasObservedAtHID(7));
    EXPECT_EQ(log_.take(), Lines{});
    EXPECT_EQ(lost_, 0);
  }
}

TEST_F(EventTapTest, ASwallowedPressOutlivesARevivedObservingTap) {
  startQuietly();
  policy_.swallows = true;
  software(Type::leftDown, 7);
  test::FakeTaps::disable(taps_.hid, TapDisabled::byTimeout);
  EXPECT_EQ(software(Type::leftUp, 7), "drop");
}

TEST_F(EventTapTest, AnObservingTapThatStaysDisabledIsGivenUpAlone) {
  startQuietly();
  policy_.swallows = true;
  hardware(Type::leftUp, 5);
  software(Type::leftDown, 7);
  log_.take();
  policy_.take();
  taps_.revives = false;
  test::FakeTaps::disable(taps_.hid, TapDisabled::byTimeout);
  EXPECT_EQ(taps_.calls, (Lines{"enable hid", "disable hid", "remove hid"}));
  EXPECT_EQ(log_.take(),
            Lines{"physical HID event observer stopped — synthetic-click suppression disabled"});
  EXPECT_EQ(lost_, 0);
  EXPECT_EQ(software(Type::leftUp, 7), "pass") << "the swallowed press is forgotten";
  policy_.swallows = false;
  policy_.converts = true;
  EXPECT_EQ(software(Type::leftDown, 8), kBecomesPress) << "conversion goes on";
  EXPECT_EQ(policy_.take(), (Lines{"note", "swallow? identify=0 observed=0", "convert left?"}));
}

TEST_F(EventTapTest, GivingUpTheObservingTapIsPossibleWithoutOne) {
  taps_.hidFails = true;
  startQuietly();
  tap_.disablePhysicalObservation();
  EXPECT_EQ(taps_.calls, Lines{});
  EXPECT_EQ(log_.take(),
            Lines{"physical HID event observer stopped — synthetic-click suppression disabled"});
}

TEST_F(EventTapTest, ADisabledConvertingTapReleasesAHeldButtonBeforeItIsRevived) {
  for (const TapDisabled why : {TapDisabled::byTimeout, TapDisabled::byUserInput}) {
    startQuietly();
    policy_.converts = true;
    hardware(Type::leftDown, 7);
    policy_.take();
    Lines order;
    events_.whenPosted = [&] { order = taps_.calls; };
    test::FakeTaps::disable(taps_.session, why);
    EXPECT_EQ(order, Lines{}) << "released first, revived then";
    EXPECT_EQ(events_.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
    EXPECT_EQ(policy_.take(), Lines{"abandon"});
    EXPECT_EQ(taps_.calls, Lines{"enable session"});
    EXPECT_EQ(lost_, 0);
    EXPECT_EQ(hardware(Type::leftUp, 7), "pass") << "the release was already made";
    events_.whenPosted = {};
  }
}

TEST_F(EventTapTest, ADisabledConvertingTapWithNothingHeldPostsNothing) {
  startQuietly();
  policy_.swallows = true;
  software(Type::leftDown, 7);
  test::FakeTaps::disable(taps_.session, TapDisabled::byTimeout);
  EXPECT_EQ(events_.take(), Lines{});
  EXPECT_EQ(software(Type::leftUp, 7), "pass") << "the swallowed press is forgotten";
}

TEST_F(EventTapTest, AConvertingTapThatStaysDisabledMeansTheListenersAreLost) {
  startQuietly();
  policy_.converts = true;
  hardware(Type::leftDown, 7);
  taps_.revives = false;
  test::FakeTaps::disable(taps_.session, TapDisabled::byUserInput);
  EXPECT_EQ(events_.take(), Lines{"mouse up 2 at (512.0, 384.5)"});
  EXPECT_EQ(lost_, 1);
}

TEST_F(EventTapTest, TheLostHandlerMayRemoveTheTapThatCallsIt) {
  startQuietly();
  tap_.setLostHandler([this] { tap_.stop(); });
  taps_.revives = false;
  test::FakeTaps::disable(taps_.session, TapDisabled::byTimeout);
  EXPECT_EQ(taps_.session, nullptr);
  EXPECT_EQ(taps_.hid, nullptr);
}

TEST_F(EventTapTest, WithoutALostHandlerALossIsSurvived) {
  startQuietly();
  tap_.setLostHandler({});
  taps_.revives = false;
  test::FakeTaps::disable(taps_.session, TapDisabled::byTimeout);
  EXPECT_EQ(lost_, 0);
}

TEST_F(EventTapTest, SaysNothingWhenNobodyAsked) {
  log_.on = false;
  EXPECT_TRUE(tap_.start());
  policy_.swallows = true;
  hardware(Type::leftDown, 1);
  hardware(Type::rightDown, 2);
  tap_.disablePhysicalObservation();
  EXPECT_EQ(log_.take(), Lines{});
}

using EventTapDeathTest = EventTapTest;

TEST_F(EventTapDeathTest, CallbacksOutsideTheMainThreadEndTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  startQuietly();
  const auto elsewhere = [](const auto& callback) { std::thread(callback).join(); };
  const char* why = "Velotap/EventTap called outside the main thread";
  test::FakeEvent event(Type::leftDown, 1);
  EXPECT_DEATH(elsewhere([&] { (void)taps_.session->callbacks.event(event); }), why);
  EXPECT_DEATH(elsewhere([&] { (void)taps_.hid->callbacks.event(event); }), why);
  EXPECT_DEATH(elsewhere([&] { taps_.session->callbacks.disabled(TapDisabled::byTimeout); }), why);
  EXPECT_DEATH(elsewhere([&] { taps_.hid->callbacks.disabled(TapDisabled::byTimeout); }), why);
}

}  // namespace
}  // namespace velotap
