#include "adapters/macos/quartz/quartz_event_taps.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "fakes/fake_quartz.hpp"

namespace velotap::test {
namespace {

constexpr std::uint64_t kPresses = 0x1E;

class QuartzEventTapsTest : public ::testing::Test {
 protected:
  std::unique_ptr<InstalledTap> install(TapLocation location,
                                        std::function<TapAnswer(TappedEvent&)> event) {
    return taps_.install(location, kPresses,
                         {std::move(event), [this](TapDisabled why) { disabled_.push_back(why); }});
  }

  FakeCoreFoundation cf_;
  FakeQuartz quartz_{cf_};
  QuartzEventTaps taps_{cf_.api(), quartz_.api()};
  std::vector<TapDisabled> disabled_;
};

TEST_F(QuartzEventTapsTest, aTapIsMadeAtTheHeadAsAnActiveFilterAndWaits) {
  const auto tap = install(TapLocation::session, [](TappedEvent&) { return TapAnswer::pass; });
  ASSERT_NE(tap, nullptr);
  ASSERT_EQ(quartz_.taps.size(), 1U);
  EXPECT_EQ(quartz_.taps[0].location, kCGSessionEventTap);
  EXPECT_EQ(quartz_.taps[0].placement, kCGHeadInsertEventTap);
  EXPECT_EQ(quartz_.taps[0].options, kCGEventTapOptionDefault);
  EXPECT_EQ(quartz_.taps[0].mask, kPresses);
  EXPECT_FALSE(tap->enabled()) << "the system enables new taps";
  EXPECT_EQ(cf_.loopSources.size(), 1U);
}

TEST_F(QuartzEventTapsTest, refusalIsNullAndLeavesNothing) {
  quartz_.refuseHid = true;
  EXPECT_EQ(install(TapLocation::hid, {}), nullptr);
  EXPECT_NE(install(TapLocation::session, {}), nullptr);
}

TEST_F(QuartzEventTapsTest, withoutASourceThereIsNoTapEither) {
  cf_.fail("CFMachPortCreateRunLoopSource");
  EXPECT_EQ(install(TapLocation::session, {}), nullptr);
  EXPECT_EQ(quartz_.installed(kCGSessionEventTap), 0U);
}

TEST_F(QuartzEventTapsTest, eventsComeOnlyWhileItIsEnabled) {
  int seen = 0;
  const auto tap = install(TapLocation::hid, [&](TappedEvent& event) {
    ++seen;
    EXPECT_EQ(event.type(), MouseEventType::rightDown);
    EXPECT_EQ(event.number(), 77);
    return TapAnswer::pass;
  });
  const FakeEvent press{.type = kCGEventRightMouseDown, .integers = {{0, 77}}};
  EXPECT_TRUE(quartz_.send(kCGHIDEventTap, press));
  EXPECT_EQ(seen, 0);
  tap->enable(true);
  EXPECT_TRUE(tap->enabled());
  EXPECT_TRUE(quartz_.send(kCGHIDEventTap, press));
  EXPECT_EQ(seen, 1);
  tap->enable(false);
  EXPECT_TRUE(quartz_.send(kCGHIDEventTap, press));
  EXPECT_EQ(seen, 1);
}

TEST_F(QuartzEventTapsTest, aDroppedEventIsNotReleasedByUs) {
  const auto tap = install(TapLocation::session, [](TappedEvent&) { return TapAnswer::drop; });
  tap->enable(true);
  EXPECT_FALSE(quartz_.send(kCGSessionEventTap, {.type = kCGEventLeftMouseDown}));
}

TEST_F(QuartzEventTapsTest, rewritingSetsTheTypeThenTheButtonAndLeavesTheRest) {
  const auto tap = install(TapLocation::session, [](TappedEvent& event) {
    event.setType(MouseEventType::otherDown);
    EXPECT_EQ(event.type(), MouseEventType::otherDown);
    event.setButton(kMiddleButton);
    return TapAnswer::pass;
  });
  tap->enable(true);
  const auto event = quartz_.send(
      kCGSessionEventTap,
      {.type = kCGEventLeftMouseDown, .location = {4, 5}, .flags = 0x20000, .integers = {{0, 9}}});
  ASSERT_TRUE(event);
  EXPECT_EQ(event->type, kCGEventOtherMouseDown);
  EXPECT_EQ(event->button, kCGMouseButtonCenter);
  EXPECT_EQ(event->integers.at(3), 2);
  EXPECT_EQ(event->integers.at(0), 9);
  EXPECT_EQ(event->location.x, 4);
  EXPECT_EQ(event->flags, 0x20000U);
}

TEST_F(QuartzEventTapsTest, aDisabledTapIsToldWhyAndTheEventIsNotTouched) {
  const auto tap = install(TapLocation::session, [](TappedEvent&) {
    ADD_FAILURE() << "there is no event";
    return TapAnswer::pass;
  });
  tap->enable(true);
  quartz_.disable(kCGSessionEventTap, kCGEventTapDisabledByTimeout, true);
  EXPECT_FALSE(tap->enabled());
  tap->enable(true);
  EXPECT_TRUE(tap->enabled());
  quartz_.disable(kCGSessionEventTap, kCGEventTapDisabledByUserInput, false);
  tap->enable(true);
  EXPECT_FALSE(tap->enabled()) << "the system need not let it come back";
  EXPECT_EQ(disabled_, (std::vector{TapDisabled::byTimeout, TapDisabled::byUserInput}));
}

TEST_F(QuartzEventTapsTest, whatWasNotAskedForIsPassedOn) {
  const auto tap = install(TapLocation::session, [](TappedEvent&) {
    ADD_FAILURE() << "not in the mask";
    return TapAnswer::drop;
  });
  const FakeTap& made = quartz_.taps[0];
  FakeObject& moved = cf_.make(FakeKind::event);
  const auto event = static_cast<CGEventRef>(static_cast<void*>(&moved));
  EXPECT_EQ(made.callback(nullptr, kCGEventMouseMoved, event, made.context), event);
  EXPECT_EQ(made.callback(nullptr, static_cast<CGEventType>(64), event, made.context), event);
  EXPECT_EQ(made.callback(nullptr, kCGEventLeftMouseDown, nullptr, made.context), nullptr);
  cf_.release(moved);
}

TEST_F(QuartzEventTapsTest, removalDisablesUnplugsInvalidatesAndReleasesInThisOrder) {
  auto tap = install(TapLocation::session, {});
  cf_.calls.clear();
  tap.reset();
  const std::string source = "CFRelease " + std::to_string(static_cast<int>(FakeKind::source));
  const std::string port = "CFRelease " + std::to_string(static_cast<int>(FakeKind::machPort));
  EXPECT_EQ(cf_.calls, (std::vector<std::string>{"CGEventTapEnable false", "CFRunLoopRemoveSource",
                                                 "CFMachPortInvalidate", source, port}));
}

TEST_F(QuartzEventTapsTest, aTapMayBeRemovedByItsOwnCallbacks) {
  std::unique_ptr<InstalledTap> tap = install(TapLocation::session, [&](TappedEvent&) {
    tap.reset();
    return TapAnswer::pass;
  });
  tap->enable(true);
  EXPECT_TRUE(quartz_.send(kCGSessionEventTap, {.type = kCGEventLeftMouseDown}));
  EXPECT_EQ(quartz_.installed(kCGSessionEventTap), 0U);

  tap = taps_.install(
      TapLocation::session, kPresses,
      {[](TappedEvent&) { return TapAnswer::pass; }, [&](TapDisabled) { tap.reset(); }});
  tap->enable(true);
  quartz_.disable(kCGSessionEventTap, kCGEventTapDisabledByTimeout, false);
  EXPECT_EQ(quartz_.installed(kCGSessionEventTap), 0U);
}

TEST_F(QuartzEventTapsTest, bothLevelsLiveSideBySide) {
  std::vector<std::string> seen;
  const auto hid = install(TapLocation::hid, [&](TappedEvent&) {
    seen.emplace_back("hid");
    return TapAnswer::pass;
  });
  auto session = install(TapLocation::session, [&](TappedEvent&) {
    seen.emplace_back("session");
    return TapAnswer::pass;
  });
  hid->enable(true);
  session->enable(true);
  EXPECT_TRUE(quartz_.send(kCGHIDEventTap, {.type = kCGEventLeftMouseDown}));
  EXPECT_TRUE(quartz_.send(kCGSessionEventTap, {.type = kCGEventLeftMouseDown}));
  session.reset();
  EXPECT_TRUE(hid->enabled());
  EXPECT_EQ(seen, (std::vector<std::string>{"hid", "session"}));
}

}  // namespace
}  // namespace velotap::test
