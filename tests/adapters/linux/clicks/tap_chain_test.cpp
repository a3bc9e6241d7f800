#include "adapters/linux/clicks/tap_chain.hpp"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <string>

#include "support/virtual_time.hpp"

namespace velotap::test {
namespace {

constexpr std::uint64_t kAll = ~std::uint64_t{0};

class TapChainTest : public testing::Test {
 protected:
  std::unique_ptr<InstalledTap> tap(TapLocation location, const std::string& name,
                                    std::uint64_t mask = kAll) {
    auto tap = chain.install(location, mask,
                             {.event =
                                  [this, name](TappedEvent& event) {
                                    heard += name + std::to_string(event.number()) + " ";
                                    if (onEvent) onEvent(event);
                                    return answer;
                                  },
                              .disabled =
                                  [this, name](TapDisabled why) {
                                    EXPECT_EQ(why, TapDisabled::byTimeout);
                                    heard += name + "off ";
                                    if (onDisabled) onDisabled();
                                  }});
    tap->enable(true);
    return tap;
  }
  Click press(std::uint16_t button, std::int64_t number = 1) {
    return {.button = button, .down = true, .number = number};
  }

  ExactClock clock;
  VirtualQueue queue{clock};
  TapChain chain;
  std::string heard;
  TapAnswer answer = TapAnswer::pass;
  std::function<void(TappedEvent&)> onEvent;
  std::function<void()> onDisabled;
};

TEST_F(TapChainTest, hidBeforeSessionAndTheNewestFirst) {
  const auto a = tap(TapLocation::session, "a");
  const auto b = tap(TapLocation::hid, "b");
  const auto c = tap(TapLocation::session, "c");
  EXPECT_EQ(chain.pass(press(BTN_LEFT, 7)), PressAnswer::unchanged);
  EXPECT_EQ(heard, "b7 c7 a7 ");
}

TEST_F(TapChainTest, whatIsDisabledOrNotInTheMaskIsPassedBy) {
  const auto off = tap(TapLocation::session, "off");
  off->enable(false);
  const auto rightOnly = tap(TapLocation::session, "right", 1U << 3U);
  static_cast<void>(chain.pass(press(BTN_LEFT)));
  EXPECT_EQ(heard, "");
  static_cast<void>(chain.pass(press(BTN_RIGHT)));
  EXPECT_EQ(heard, "right1 ");
}

TEST_F(TapChainTest, aMiddleButtonIsBeyondEveryMask) {
  const auto a = tap(TapLocation::session, "a", 0xDE);
  EXPECT_EQ(chain.pass(press(BTN_MIDDLE)), PressAnswer::unchanged);
  EXPECT_EQ(heard, "");
}

TEST_F(TapChainTest, aRewrittenPressIsAMiddlePress) {
  onEvent = [](TappedEvent& event) {
    event.setType(MouseEventType::otherDown);
    event.setButton(kMiddleButton);
  };
  const auto a = tap(TapLocation::session, "a");
  EXPECT_EQ(chain.pass(press(BTN_LEFT)), PressAnswer::middle);
}

TEST_F(TapChainTest, aDroppedPressGoesNoFurther) {
  answer = TapAnswer::drop;
  const auto a = tap(TapLocation::session, "a");
  const auto b = tap(TapLocation::session, "b");
  EXPECT_EQ(chain.pass(press(BTN_LEFT)), PressAnswer::dropped);
  EXPECT_EQ(heard, "b1 ");
}

TEST_F(TapChainTest, whatWentItsOwnWayIsSeenByHidTapsAlone) {
  const auto a = tap(TapLocation::session, "a");
  const auto b = tap(TapLocation::hid, "b");
  chain.observe(press(BTN_LEFT));
  EXPECT_EQ(heard, "b1 ");
}

TEST_F(TapChainTest, aTapMayRemoveItselfFromItsOwnCallback) {
  std::unique_ptr<InstalledTap> a = tap(TapLocation::session, "a");
  onEvent = [&a](TappedEvent&) { a.reset(); };
  EXPECT_EQ(chain.pass(press(BTN_LEFT)), PressAnswer::unchanged);
  EXPECT_FALSE(chain.active());
  static_cast<void>(chain.pass(press(BTN_LEFT)));
  EXPECT_EQ(heard, "a1 ");
}

TEST_F(TapChainTest, isActiveWhileATapIsEnabled) {
  int changes = 0;
  chain.setChanged([&changes] { ++changes; });
  EXPECT_FALSE(chain.active());
  auto hid = tap(TapLocation::hid, "b");
  EXPECT_TRUE(chain.active());
  EXPECT_FALSE(chain.mayRewrite());
  auto session = tap(TapLocation::session, "a");
  EXPECT_TRUE(chain.mayRewrite());
  session->enable(false);
  EXPECT_FALSE(chain.mayRewrite());
  hid.reset();
  EXPECT_FALSE(chain.active());
  EXPECT_GE(changes, 4);
}

TEST_F(TapChainTest, aTimeoutHoldsNothingBackUntilEveryTapHasHeardOfIt) {
  const auto a = tap(TapLocation::session, "a");
  const auto b = tap(TapLocation::hid, "b");
  onDisabled = [&] {
    if (heard.ends_with("boff ")) b->enable(true);
    if (heard.ends_with("aoff ")) a->enable(true);
  };
  chain.reportTimeout(queue);
  chain.reportTimeout(queue);
  EXPECT_FALSE(chain.active());
  EXPECT_TRUE(a->enabled());
  queue.runDue();
  EXPECT_EQ(heard, "boff aoff ");
  EXPECT_TRUE(chain.active());
}

TEST_F(TapChainTest, aTapThatDoesNotComeBackStaysOff) {
  const auto a = tap(TapLocation::session, "a");
  chain.reportTimeout(queue);
  queue.runDue();
  EXPECT_FALSE(a->enabled());
  EXPECT_FALSE(chain.active());
}

TEST_F(TapChainTest, tapsMayOutliveTheChain) {
  std::unique_ptr<InstalledTap> kept;
  {
    TapChain other;
    kept = other.install(TapLocation::session, kAll, {.event = {}, .disabled = [](TapDisabled) {}});
    kept->enable(true);
    other.reportTimeout(queue);
  }
  queue.runDue();
  kept->enable(false);
  EXPECT_FALSE(kept->enabled());
}

TEST_F(TapChainTest, numbersAreNeverGivenTwice) {
  EXPECT_NE(chain.nextNumber(), chain.nextNumber());
}

}  // namespace
}  // namespace velotap::test
