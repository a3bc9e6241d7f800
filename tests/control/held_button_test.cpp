// Whatever happens between the press and the release of a converted click (taps lost, listeners
// stopped, applications switched, fingers gone), the rest of the desktop never keeps a middle
// button down that nobody holds.

#include <gtest/gtest.h>

#include "control/services.hpp"
#include "support/desktop.hpp"
#include "support/random_hand.hpp"

namespace velotap {
namespace {

using Type = MouseEventType;

class HeldButton : public ::testing::TestWithParam<std::uint32_t>, protected test::Desktop {
 protected:
  HeldButton() {
    log.setEnabled(false);
    multitouch.add({.name = "pad", .family = 128});
    multitouch.add({.name = "mouse", .family = 112});
    activate(kApps[0]);
    for (const char* key : {"mouseClick2", "mouseClick1Center"}) services.defaults.set(key, true);
    services.launch();
  }

  // What hardware does, and what the desktop makes of what comes out.
  void press(bool left) {
    bool& down = left ? leftDown_ : rightDown_;
    const bool fromHardware = !hand_.chance(10);
    const std::string out = button(
        down ? (left ? Type::leftUp : Type::rightUp) : (left ? Type::leftDown : Type::rightDown),
        number_++, fromHardware);
    if (out == "type=25 button=2") {
      EXPECT_FALSE(down);
      EXPECT_FALSE(middleDown_) << "pressed twice";
      middleDown_ = true;
      ++conversions_;
    } else if (out == "type=26 button=2") {
      EXPECT_TRUE(down);
      EXPECT_TRUE(middleDown_) << "released twice";
      middleDown_ = false;
    } else {
      EXPECT_TRUE(out == "pass" || out == "drop") << out;
    }
    if (fromHardware || down) down = !down;
  }
  void drag() {
    const std::string out = button(leftDown_ ? Type::leftDragged : Type::rightDragged, number_++);
    EXPECT_TRUE(out == "pass" || middleDown_) << out;
  }
  void readPosted() {
    const auto lines = posted.take();
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (lines[i].starts_with("mouse down")) {
        ++i;  // a tap's click is whole
        ASSERT_LT(i, lines.size());
        EXPECT_TRUE(lines[i].starts_with("mouse up"));
      } else if (lines[i].starts_with("mouse up")) {
        EXPECT_TRUE(middleDown_) << "a release that nobody waits for";
        middleDown_ = false;
        ++rescues_;
      }
    }
  }
  void disable(TapLocation location) {
    taps.disable(location, hand_.chance(2) ? TapDisabled::byTimeout : TapDisabled::byUserInput,
                 !hand_.chance(3));
    readPosted();
    EXPECT_FALSE(location == TapLocation::session && middleDown_ && taps.installed(location) > 0);
  }
  void stopped() {
    readPosted();
    EXPECT_FALSE(middleDown_);
  }

  void interrupt() {
    switch (hand_.below(4)) {
      case 0:
        services.controller.stop();
        break;
      case 1:
        services.controller.restart();
        break;
      case 2:
        notices.willSleep();
        break;
      default:
        notices.displayReconfigured();
    }
    mainQueue.runDue();
    stopped();
  }

  void step() {
    switch (hand_.below(36)) {
      case 0:
        disable(TapLocation::session);
        break;
      case 1:
        disable(TapLocation::hid);
        break;
      case 2:
        if (hand_.chance(4)) interrupt();
        break;
      case 3:
        services.controller.start();
        break;
      case 4:
        activate(kApps[hand_.below(2)]);
        break;
      case 5:
        services.config.setIgnoredApps(hand_.chance(2) ? std::vector<std::string>{kApps[1]}
                                                       : std::vector<std::string>{});
        break;
      case 6:
        services.defaults.set("enabled", !hand_.chance(4));
        break;
      case 7:
        advance(hand_.below(3));
        break;
      case 8:
        taps.setInstallable(TapLocation::hid, !hand_.chance(3));
        taps.setInstallable(TapLocation::session, !hand_.chance(6));
        break;
      case 9:
      case 10:
      case 11:
      case 12:
        press(true);
        break;
      case 13:
      case 14:
        press(false);
        break;
      case 15:
        drag();
        break;
      default: {
        const char* device = hand_.chance(8) ? "mouse" : "pad";
        const test::Frame contacts = hand_.next();
        multitouch.deliver(device, contacts.data(), static_cast<std::int32_t>(contacts.size()));
        if (hand_.chance(10)) multitouch.deliver(device, nullptr, 0);
        advance(0.008);
      }
    }
    readPosted();
    EXPECT_EQ(middleDown_, services.engine.isConverting(ClickPolicy::Button::left) ||
                               services.engine.isConverting(ClickPolicy::Button::right));
  }

  static constexpr const char* kApps[] = {"com.example.editor", "com.example.browser"};
  Services services{platform};
  test::RandomHand hand_{GetParam()};
  std::int64_t number_ = 1;
  bool leftDown_ = false;
  bool rightDown_ = false;
  bool middleDown_ = false;
  int conversions_ = 0;
  int rescues_ = 0;
};

TEST_P(HeldButton, IsAlwaysReleased) {
  for (int i = 0; i < 30000 && !HasFailure(); ++i) step();
  services.controller.stop();
  stopped();
  EXPECT_GT(conversions_, 20) << "or nothing was ever converted";
  EXPECT_GT(rescues_, 3);
}

INSTANTIATE_TEST_SUITE_P(Seeds, HeldButton, ::testing::Range(1U, 9U));

}  // namespace
}  // namespace velotap
