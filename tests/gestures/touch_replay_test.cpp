#include "gestures/touch_replay.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <thread>

#include "engine_fixture.hpp"
#include "fingers.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

constexpr double kNever = std::numeric_limits<double>::infinity();

std::vector<TouchContact> contactsOf(const std::vector<Fingers>& frames) {
  TouchTrace trace;
  for (const Fingers& frame : frames) trace.add(frame);
  return {trace.contacts().begin(), trace.contacts().end()};
}

/// Three fingers of which the middle one strays by `drift`.
KeptTap tap(double end, double duration, float drift) {
  return {.end = end,
          .duration = duration,
          .sinceNatural = kNever,
          .contacts =
              contactsOf({fingers({finger(1, 0.2F, 0), finger(2, 0, 0), finger(3, 0.6F, 0)}),
                          fingers({finger(1, 0.2F, 0), finger(2, drift, 0), finger(3, 0.6F, 0)}),
                          fingers({finger(3, 0.6F, 0)})})};
}

/// Two fingers that spread from 20 to 20 + `millimetres`, in steps of a millimetre.
std::vector<TouchContact> spread(int millimetres) {
  std::vector<Fingers> frames;
  for (int i = 0; i <= millimetres; ++i) {
    const float half = (20.0F + static_cast<float>(i)) / 200;
    frames.push_back(fingers({finger(1, 0.5F - half, 0.5F), finger(2, 0.5F + half, 0.5F)}));
  }
  return contactsOf(frames);
}

TEST(ReplayedTaps, AreJudgedInclusively) {
  constexpr float kDrift = 0.05F;
  const double drift = static_cast<double>(kDrift);
  const std::vector<KeptTap> taps = {tap(1, 0.3, kDrift), tap(2, 0.301, kDrift),
                                     tap(3, 0.3, 0.051F)};
  EXPECT_EQ(replayedDrift(taps[0].contacts), drift);
  EXPECT_EQ(replayTaps(taps, {.duration = 0.3, .drift = drift}),
            (ReplayedTouches{.accepted = 1, .total = 3}));
  EXPECT_EQ(replayTaps(taps, {.duration = 0.31, .drift = drift}).accepted, 2);
  EXPECT_EQ(replayTaps(taps, {.duration = 0.31, .drift = 0.06}).accepted, 3);
  EXPECT_EQ(replayTaps(taps, {.duration = 0.31, .drift = 0.049}).accepted, 0);
  EXPECT_EQ(replayTaps({}, {}), ReplayedTouches{});
}

// Two quick taps are two clicks under a short limit and one under a long limit, whose pause after a
// click is longer.
TEST(ReplayedTaps, MakeTheNextOneTooSoon) {
  const std::vector<KeptTap> taps = {tap(1, 0.1, 0), tap(1.1, 0.1, 0)};
  EXPECT_EQ(replayTaps(taps, {.duration = 0.3, .drift = 0.05}).accepted, 2);
  EXPECT_EQ(replayTaps(taps, {.duration = 0.5, .drift = 0.05}).accepted, 1);
}

TEST(ReplayedTaps, BesideAPhysicalClickAreNone) {
  std::vector<KeptTap> taps = {tap(1, 0.1, 0)};
  taps[0].sinceNatural = 0.31;
  EXPECT_EQ(replayTaps(taps, {.duration = 0.3, .drift = 0.05}).accepted, 1);
  EXPECT_EQ(replayTaps(taps, {.duration = 0.31, .drift = 0.05}).accepted, 0);
}

TEST(ReplayedPinches, ZoomByWholeSteps) {
  EXPECT_FALSE(replayPinch(spread(3), 1, false).began) << "exactly the limit is none yet";
  EXPECT_TRUE(replayPinch(spread(4), 1, false).began);
  const ReplayedPinch wide = replayPinch(spread(20), 1, false);
  EXPECT_GT(wide.zoomedIn, 0);
  EXPECT_EQ(wide.zoomedOut, 0);
  EXPECT_GT(replayPinch(spread(20), 2, false).zoomedIn, wide.zoomedIn);
  const std::vector<KeptPinch> pinches = {{spread(4)}, {spread(8)}, {spread(20)}};
  EXPECT_EQ(replayPinches(pinches, 0.3), (ReplayedTouches{.accepted = 1, .total = 3}));
  EXPECT_EQ(replayPinches(pinches, 1.0).accepted, 2);
  EXPECT_EQ(replayPinches(pinches, 3.0).accepted, 2);
}

TEST(ReplayedPinches, AThirdFingerOrAMissingOneEndsThem) {
  std::vector<Fingers> frames = {fingers({finger(1, 0.4F, 0.5F), finger(2, 0.6F, 0.5F)}),
                                 fingers({finger(1, 0.4F, 0.5F)}),
                                 fingers({finger(1, 0.3F, 0.5F), finger(2, 0.7F, 0.5F)})};
  EXPECT_FALSE(replayPinch(contactsOf(frames), 1, false).began);
  frames[1] = fingers({finger(1, 0.4F, 0.5F), finger(2, 0.6F, 0.5F), finger(3, 0.8F, 0.5F)});
  EXPECT_FALSE(replayPinch(contactsOf(frames), 1, false).began);
  frames[1] = fingers({finger(1, 0.4F, 0.5F), finger(2, 0.6F, 0.5F)});
  EXPECT_TRUE(replayPinch(contactsOf(frames), 1, false).began);
  frames[0] = fingers({finger(1, 0.01F, 0.5F), finger(2, 0.6F, 0.5F)});
  EXPECT_FALSE(replayPinch(contactsOf(frames), 1, false).began) << "began on the side edge";
}

TEST(ReplayedClicks, LieInTheBandInclusively) {
  const std::vector<KeptClick> clicks = {{{0.34F, 0}}, {{0.35F, 0}}, {{0.65F, 0}}, {{0.66F, 0}}};
  EXPECT_EQ(replayClicks(clicks, {0.35F, 0.65F}), (ReplayedTouches{.accepted = 2, .total = 4}));
  EXPECT_EQ(replayClicks(clicks, {0.34F, 0.65F}).accepted, 3);
  EXPECT_EQ(replayClicks({}, {}), ReplayedTouches{});
}

// What the engine kept, replayed under the limits that were in force, comes to what it did.
class KeptByTheEngine : public EngineTest {
 protected:
  KeptByTheEngine() {
    for (const char* key : {"mouseTap3", "padTap3", "padTap4", "mousePinchZoom"}) set(key, true);
    log.setEnabled(false);
  }
  [[nodiscard]] TapLimits limits() const {
    return {.duration = config.maxTapDuration(), .drift = config.maxTapDrift()};
  }
  /// Two fingers on the mouse that spread by so many millimetres and lift one after the other.
  void spreadOnMouse(int millimetres) {
    for (int i = 0; i <= millimetres; ++i) {
      const float half = (20.0F + static_cast<float>(i)) / 200;
      frame(mouse, {touch({.id = 1, .x = 0.5F - half}), touch({.id = 2, .x = 0.5F + half})});
      time.advance(0.01);
    }
    frame(mouse, {touch({.id = 1, .x = 0.4F})});
    lift(mouse);
    time.advance(2);
  }
};

TEST_F(KeptByTheEngine, EachOutcomeIsDecidedAlike) {
  for (const auto& [seconds, dx] : {std::pair{0.125, 0.0F},
                                    {0.3, 0.02F},
                                    {0.34, 0.0F},
                                    {0.2, 0.05F},
                                    {0.2, 0.0612F},
                                    {0.55, 0.1F}}) {
    tap(pad, 3, seconds, dx, 0);
    time.advance(1);
  }
  tap(pad, 4);
  tap(mouse, 3);  // too soon after the one before
  const Lines outcomes = this->outcomes();
  const KeptTouches kept = activity.touches();
  ASSERT_EQ(kept.taps.size(), 8U);
  EXPECT_EQ(outcomes.size(), 8U);
  const auto clicks = std::count(outcomes.begin(), outcomes.end(), "click");
  EXPECT_GT(clicks, 0);
  EXPECT_LT(clicks, 8);
  EXPECT_EQ(replayTaps(kept.taps, limits()),
            (ReplayedTouches{.accepted = static_cast<int>(clicks), .total = 8}));
}

TEST_F(KeptByTheEngine, AnyFiftyTapsAreDecidedAlike) {
  std::mt19937 random(7);
  const auto upTo = [&random](float limit) {
    return std::uniform_real_distribution<float>(0, limit)(random);
  };
  std::size_t clicks = 0;
  std::size_t recorded = 0;
  const Observation records = activity.observeRecords([&](const TapActivity& each) {
    ++recorded;
    if (each.outcome == Outcome::click) ++clicks;
  });
  while (recorded < TouchHistory::kCapacity) {
    tap(pad, 3, static_cast<double>(upTo(0.5F)), upTo(0.04F), upTo(0.04F));
    time.advance(static_cast<double>(upTo(0.2F)));
  }
  EXPECT_EQ(replayTaps(activity.touches().taps, limits()),
            (ReplayedTouches{.accepted = static_cast<int>(clicks), .total = 50}));
  EXPECT_GT(clicks, 5U);
  EXPECT_LT(clicks, 45U);
}

// The window reads while frames come.
TEST_F(KeptByTheEngine, ReadingMayHappenAtAnyTime) {
  posted.stop();
  std::thread frames([this] {
    for (int i = 0; i < 300; ++i) {
      tap(pad, 3);
      time.advance(1);
      spreadOnMouse(5);
    }
  });
  for (int i = 0; i < 300; ++i) {
    const KeptTouches kept = activity.touches();
    EXPECT_EQ(replayTaps(kept.taps, limits()).accepted, static_cast<int>(kept.taps.size()));
  }
  frames.join();
  EXPECT_EQ(activity.touches().taps.size(), TouchHistory::kCapacity);
  EXPECT_EQ(activity.touches().pinches.size(), TouchHistory::kCapacity);
}

TEST_F(KeptByTheEngine, APinchZoomsByTheSameSteps) {
  config.setKeystrokeZoomApps({kEditor});
  for (const double sensitivity : {0.3, 1.0, 2.5}) {
    set("pinchSensitivity", sensitivity);
    posted.take();
    spreadOnMouse(20);
    const Lines keys = posted.take();
    const std::vector<KeptPinch> pinches = activity.touches().pinches;
    ASSERT_FALSE(pinches.empty());
    const ReplayedPinch replayed = replayPinch(pinches.back().contacts, sensitivity, false);
    EXPECT_TRUE(replayed.began);
    // A keystroke is a press and a release.
    EXPECT_EQ(static_cast<std::size_t>(replayed.zoomedIn) * 2, keys.size()) << sensitivity;
  }
}

TEST_F(KeptByTheEngine, OnlyPinchesAreKeptOfTwoFingers) {
  spreadOnMouse(2);
  EXPECT_TRUE(activity.touches().pinches.empty()) << "too little to be one";
  spreadOnMouse(8);
  EXPECT_EQ(activity.touches().pinches.size(), 1U);
  set("mousePinchZoom", false);
  spreadOnMouse(8);
  EXPECT_EQ(activity.touches().pinches.size(), 1U);
}

TEST_F(KeptByTheEngine, OneFingerClicksAreKeptBesideTheBandToo) {
  set("mouseClick1Center", true);
  for (const float x : {0.2F, 0.5F}) {
    frame(mouse, {touch({.id = 1, .x = x})});
    EXPECT_EQ(engine.shouldConvertClick(Button::left), x == 0.5F);
    engine.endConversion(Button::left);
    lift(mouse);
  }
  frame(mouse, row(2));
  static_cast<void>(engine.shouldConvertClick(Button::left));
  engine.endConversion(Button::left);
  lift(mouse);
  const std::vector<KeptClick> clicks = activity.touches().clicks;
  ASSERT_EQ(clicks.size(), 2U) << "two fingers tell nothing about the band";
  EXPECT_EQ(clicks[0].position.x, 0.2F);
  EXPECT_EQ(replayClicks(clicks, config.centerBand()),
            (ReplayedTouches{.accepted = 1, .total = 2}));
  set("mouseClick1Center", false);
  frame(mouse, row(1));
  static_cast<void>(engine.shouldConvertClick(Button::left));
  EXPECT_EQ(activity.touches().clicks.size(), 2U);
}

}  // namespace
}  // namespace velotap
