// Click conversion over the system's own taps: what is asked of the system, and in which order.
#include <gtest/gtest.h>

#include "adapters/macos/quartz/quartz_event_stream.hpp"
#include "adapters/macos/quartz/quartz_event_taps.hpp"
#include "fakes/fake_quartz.hpp"
#include "output/event_tap.hpp"
#include "support/exact_clock.hpp"
#include "support/recording_log.hpp"
#include "support/virtual_time.hpp"

namespace velotap::test {
namespace {

using Texts = std::vector<std::string>;

class ScriptedPolicy final : public ClickPolicy {
 public:
  void notePhysicalButtonDown() override { ++physical; }
  bool shouldSwallowSyntheticLeftClick(bool canIdentify, bool observed) override {
    return swallows && canIdentify && !observed;
  }
  bool shouldConvertClick(Button button) override {
    if (!converts) return false;
    held = button;
    return true;
  }
  bool isConverting(Button button) override { return held == button; }
  bool endConversion(Button button) override {
    if (held != button) return false;
    held.reset();
    return true;
  }
  bool abandonConversion() override { return std::exchange(held, std::nullopt).has_value(); }

  bool converts = false;
  bool swallows = false;
  int physical = 0;
  std::optional<Button> held;
};

class EventTapOverQuartzTest : public ::testing::Test {
 protected:
  EventTapOverQuartzTest() {
    tap_.setLostHandler([this] {
      ++lost_;
      tap_.stop();
    });
  }
  static FakeEvent mouse(CGEventType type, std::int64_t number) {
    return {.type = type, .integers = {{kCGMouseEventNumber, number}}};
  }
  // A press of the hardware passes the lowest level first.
  std::optional<FakeEvent> hardware(CGEventType type, std::int64_t number) {
    static_cast<void>(quartz_.send(kCGHIDEventTap, mouse(type, number)));
    return quartz_.send(kCGSessionEventTap, mouse(type, number));
  }
  Texts calls() {
    Texts taken;
    for (std::string& call : std::exchange(cf_.calls, {})) {
      if (call.find("CFRelease") == std::string::npos) taken.push_back(std::move(call));
    }
    return taken;
  }

  FakeCoreFoundation cf_;
  FakeQuartz quartz_{cf_};
  ExactClock clock_;
  VirtualQueue queue_{clock_};
  RecordingLog log_;
  ScriptedPolicy policy_;
  QuartzEventStream events_{cf_.api(), quartz_.api(), quartz_.runtime()};
  QuartzEventTaps taps_{cf_.api(), quartz_.api()};
  EventTap tap_{taps_, policy_, events_, clock_, queue_, log_};
  int lost_ = 0;
};

TEST_F(EventTapOverQuartzTest, bothTapsAreActiveFiltersAtTheHeadWithTheirMasks) {
  ASSERT_TRUE(tap_.start());
  ASSERT_EQ(quartz_.taps.size(), 2U);
  const FakeTap& session = quartz_.taps[0];
  const FakeTap& hid = quartz_.taps[1];
  EXPECT_EQ(hid.location, kCGHIDEventTap);
  EXPECT_EQ(hid.mask, 0x1EU);
  EXPECT_EQ(session.location, kCGSessionEventTap);
  EXPECT_EQ(session.mask, 0xDEU);
  for (const FakeTap* tap : {&session, &hid}) {
    EXPECT_EQ(tap->placement, kCGHeadInsertEventTap);
    EXPECT_EQ(tap->options, kCGEventTapOptionDefault);
    EXPECT_TRUE(tap->enabled);
  }
  EXPECT_EQ(cf_.loopSources.size(), 2U);
  EXPECT_EQ(log_.take(), Texts{"event tap active"});
}

TEST_F(EventTapOverQuartzTest, neitherIsEnabledBeforeBothAreThere) {
  ASSERT_TRUE(tap_.start());
  EXPECT_EQ(calls(),
            (Texts{"CGEventTapEnable false", "CFRunLoopAddSource", "CGEventTapEnable false",
                   "CFRunLoopAddSource", "CGEventTapEnable true", "CGEventTapEnable true"}));
}

TEST_F(EventTapOverQuartzTest, stoppingDisablesBothAndTakesBothOffTheLoopBeforeEitherIsRemoved) {
  ASSERT_TRUE(tap_.start());
  static_cast<void>(calls());
  tap_.stop();
  EXPECT_EQ(calls(),
            (Texts{"CGEventTapEnable false", "CGEventTapEnable false", "CFRunLoopRemoveSource",
                   "CFRunLoopRemoveSource", "CFMachPortInvalidate", "CFMachPortInvalidate"}));
  EXPECT_TRUE(cf_.loopSources.empty());
  EXPECT_EQ(quartz_.installed(kCGHIDEventTap) + quartz_.installed(kCGSessionEventTap), 0U);
}

TEST_F(EventTapOverQuartzTest, withoutTheLowestLevelEveryPressIsPhysicalAndNothingIsSwallowed) {
  quartz_.refuseHid = true;
  policy_.swallows = true;
  ASSERT_TRUE(tap_.start());
  EXPECT_EQ(log_.take(), (Texts{"physical HID event observer unavailable — synthetic-click "
                                "suppression disabled",
                                "event tap active"}));
  EXPECT_TRUE(quartz_.send(kCGSessionEventTap, mouse(kCGEventLeftMouseDown, 1)));
  EXPECT_EQ(policy_.physical, 1);
  EXPECT_EQ(log_.take(), Texts{"left mouse down: HID=false"});
}

TEST_F(EventTapOverQuartzTest, withoutTheSessionNothingStays) {
  quartz_.refuseSession = true;
  EXPECT_FALSE(tap_.start());
  EXPECT_EQ(quartz_.installed(kCGHIDEventTap), 0U);
  EXPECT_TRUE(cf_.loopSources.empty());
  EXPECT_EQ(log_.take(), Texts{"event tap creation FAILED — check Accessibility permission"});
}

TEST_F(EventTapOverQuartzTest, aSyntheticClickIsSwallowedWithItsRelease) {
  policy_.swallows = true;
  ASSERT_TRUE(tap_.start());
  EXPECT_FALSE(quartz_.send(kCGSessionEventTap, mouse(kCGEventLeftMouseDown, 5)));
  EXPECT_TRUE(quartz_.send(kCGSessionEventTap, mouse(kCGEventLeftMouseUp, 6)));
  EXPECT_FALSE(quartz_.send(kCGSessionEventTap, mouse(kCGEventLeftMouseUp, 5)));
  EXPECT_TRUE(hardware(kCGEventLeftMouseDown, 7)) << "it passed the lowest level";
}

TEST_F(EventTapOverQuartzTest, aConvertedRightClickIsAMiddleOneToItsEnd) {
  policy_.converts = true;
  ASSERT_TRUE(tap_.start());
  const std::pair<CGEventType, CGEventType> steps[] = {
      {kCGEventRightMouseDown, kCGEventOtherMouseDown},
      {kCGEventRightMouseDragged, kCGEventOtherMouseDragged},
      {kCGEventRightMouseUp, kCGEventOtherMouseUp}};
  for (const auto& [from, to] : steps) {
    const auto passed = hardware(from, 3);
    ASSERT_TRUE(passed);
    EXPECT_EQ(passed->type, to);
    EXPECT_EQ(passed->integers.at(kCGMouseEventButtonNumber), 2);
    EXPECT_EQ(passed->integers.at(kCGMouseEventNumber), 3);
    EXPECT_FALSE(passed->flags);
  }
  EXPECT_FALSE(policy_.held);
}

TEST_F(EventTapOverQuartzTest, aTimeOutReleasesTheMiddleButtonAndRevives) {
  policy_.converts = true;
  ASSERT_TRUE(tap_.start());
  EXPECT_TRUE(hardware(kCGEventLeftMouseDown, 3));
  quartz_.disable(kCGSessionEventTap, kCGEventTapDisabledByTimeout, true);
  ASSERT_EQ(quartz_.posts.size(), 1U);
  EXPECT_EQ(quartz_.posts[0].event.type, kCGEventOtherMouseUp);
  EXPECT_EQ(quartz_.posts[0].location, kCGHIDEventTap);
  EXPECT_TRUE(quartz_.taps[0].enabled);
  EXPECT_EQ(lost_, 0);
}

TEST_F(EventTapOverQuartzTest, aSessionThatDoesNotReviveIsLostWhicheverWayItWasDisabled) {
  for (const CGEventType reason : {kCGEventTapDisabledByTimeout, kCGEventTapDisabledByUserInput}) {
    ASSERT_TRUE(tap_.start());
    lost_ = 0;
    quartz_.disable(kCGSessionEventTap, reason, false);
    EXPECT_EQ(lost_, 1);
    EXPECT_TRUE(cf_.loopSources.empty());
  }
}

TEST_F(EventTapOverQuartzTest, theLowestLevelRevivesOrIsGivenUpAlone) {
  policy_.swallows = true;
  ASSERT_TRUE(tap_.start());
  quartz_.disable(kCGHIDEventTap, kCGEventTapDisabledByTimeout, true);
  EXPECT_EQ(quartz_.installed(kCGHIDEventTap), 1U);
  static_cast<void>(log_.take());
  quartz_.disable(kCGHIDEventTap, kCGEventTapDisabledByUserInput, false);
  EXPECT_EQ(log_.take(),
            Texts{"physical HID event observer stopped — synthetic-click suppression disabled"});
  EXPECT_EQ(quartz_.installed(kCGHIDEventTap), 0U);
  EXPECT_EQ(cf_.loopSources.size(), 1U);
  EXPECT_TRUE(quartz_.send(kCGSessionEventTap, mouse(kCGEventLeftMouseDown, 8)))
      << "nothing is swallowed any more";
  EXPECT_EQ(lost_, 0);
}

}  // namespace
}  // namespace velotap::test
