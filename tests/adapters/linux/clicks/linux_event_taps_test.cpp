#include "adapters/linux/clicks/linux_event_taps.hpp"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>

#include "../evdev/event_maker.hpp"
#include "fake_hardware.hpp"
#include "support/virtual_time.hpp"

namespace velotap::test {
namespace {

constexpr const char* kMouse = "/dev/input/event3";
constexpr const char* kPad = "/dev/input/event4";
constexpr const char* kSecondMouse = "/dev/input/event5";

class LinuxEventTapsTest : public testing::Test {
 protected:
  LinuxEventTapsTest() {
    plug(kMouse, magicMouse());
    plug(kPad, magicTrackpad());
    taps = std::make_unique<LinuxEventTaps>(LinuxEventTaps::Links{
        .queue = queue,
        .clock = clock,
        .surfaces =
            [this] {
              std::vector<std::string> paths;
              for (const auto& [path, device] : devices) paths.push_back(path);
              return paths;
            },
        .hardware = [this](const std::string& path) -> std::unique_ptr<MirrorHardware> {
          if (!mirrors) return nullptr;
          const auto& [kernel, description] = devices.at(path);
          return std::make_unique<FakeHardware>(kernel, path, description);
        },
        .observer =
            [this](const std::string& path, ClickObserver::Seen seen) {
              seenBy[path] = std::move(seen);
              return std::unique_ptr<ClickObserver>();
            },
        .desktopAnswers = [this](const EvdevDevice&) { return desktopAnswers; },
        .middle = [this](bool down) { middle += down ? 1 : -1; },
        .tell = [this](const std::string& text) { told.push_back(text); },
        .note = [](const std::string&) {}});
  }
  ~LinuxEventTapsTest() override {
    // What the tests install goes before the taps, as in the program.
    session.reset();
    hid.reset();
    taps.reset();
  }

  void plug(const std::string& path, EvdevDevice description) {
    auto kernel = std::make_shared<FakeKernel>(clock);
    kernel->block = true;
    devices[path] = {kernel, std::move(description)};
  }
  FakeKernel& kernel(const std::string& path) { return *devices.at(path).first; }

  void install() {
    const auto hear = [this](TappedEvent& event) {
      heard.push_back(static_cast<int>(event.type()));
      if (converts && event.type() == MouseEventType::leftDown) {
        event.setType(MouseEventType::otherDown);
        event.setButton(kMiddleButton);
      }
      return TapAnswer::pass;
    };
    session =
        taps->install(TapLocation::session, 0xDE, {.event = hear, .disabled = [this](TapDisabled) {
                                                     ++timeouts;
                                                     session->enable(true);
                                                   }});
    session->enable(true);
  }

  /// Serves the main thread until something is so.
  template <typename Condition>
  void until(const Condition& condition) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
      ASSERT_LT(std::chrono::steady_clock::now(), limit);
      queue.runDue();
      std::this_thread::yield();
    }
  }
  [[nodiscard]] GrabState state(const std::string& path) const {
    for (const auto& device : taps->status()) {
      if (device.path == path) return device.status.state;
    }
    return GrabState::resting;
  }
  [[nodiscard]] int opens(const std::string& path) {
    const std::lock_guard guard(kernel(path).lock);
    return kernel(path).opens;
  }
  void untilState(const std::string& path, GrabState wanted) {
    until([&] { return state(path) == wanted; });
  }

  ExactClock clock;
  VirtualQueue queue{clock};
  std::map<std::string, std::pair<std::shared_ptr<FakeKernel>, EvdevDevice>> devices;
  std::map<std::string, ClickObserver::Seen> seenBy;
  bool mirrors = true;
  bool desktopAnswers = false;
  bool converts = false;
  std::atomic<int> middle{0};
  int timeouts = 0;
  std::vector<int> heard;
  std::vector<std::string> told;
  std::unique_ptr<LinuxEventTaps> taps;
  std::unique_ptr<InstalledTap> session;
  std::unique_ptr<InstalledTap> hid;
};

TEST_F(LinuxEventTapsTest, withoutNeedsNothingIsGrabbed) {
  install();
  queue.runDue();
  EXPECT_EQ(taps->status().size(), 2U);
  EXPECT_EQ(kernel(kMouse).mirrors, 0);
  EXPECT_EQ(kernel(kPad).mirrors, 0);
}

TEST_F(LinuxEventTapsTest, withoutTapsNothingIsGrabbed) {
  taps->setNeeds({.mouseClicks = true, .mouseGestures = true, .trackpadClicks = true});
  queue.runDue();
  EXPECT_TRUE(taps->status().empty());
}

TEST_F(LinuxEventTapsTest, theMouseIsTakenForItsClicksAndGivenBackWithTheLastNeed) {
  install();
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::grabbed);
  EXPECT_EQ(kernel(kPad).mirrors, 0);
  taps->setNeeds({.mouseGestures = true});
  queue.runDue();
  taps->setNeeds({});
  untilState(kMouse, GrabState::resting);
  EXPECT_FALSE(kernel(kMouse).grabbed);
  EXPECT_EQ(kernel(kMouse).grabs, 1);
}

TEST_F(LinuxEventTapsTest, aTrackpadIsTakenUnlessTheDesktopAnswersItself) {
  desktopAnswers = true;
  install();
  taps->setNeeds({.trackpadClicks = true});
  queue.runDue();
  EXPECT_EQ(kernel(kPad).mirrors, 0);
  desktopAnswers = false;
  taps->reconsider();
  untilState(kPad, GrabState::grabbed);
  EXPECT_EQ(kernel(kMouse).mirrors, 0);
  desktopAnswers = true;
  taps->reconsider();
  untilState(kPad, GrabState::resting);
}

TEST_F(LinuxEventTapsTest, aRestartOfTheListenersKeepsTheGrab) {
  install();
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::grabbed);
  session.reset();
  install();
  queue.runDue();
  untilState(kMouse, GrabState::grabbed);
  EXPECT_EQ(kernel(kMouse).grabs, 1);
}

TEST_F(LinuxEventTapsTest, stoppedListenersGiveBack) {
  install();
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::grabbed);
  session.reset();
  untilState(kMouse, GrabState::resting);
  EXPECT_FALSE(kernel(kMouse).mirrored);
}

TEST_F(LinuxEventTapsTest, anInactiveSessionGivesBackAtOnceThoughAButtonIsDown) {
  converts = true;
  install();
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::grabbed);
  kernel(kMouse).send({event(EV_KEY, BTN_LEFT, 1), report()});
  until([&] { return middle == 1; });
  taps->setSessionActive(false);
  untilState(kMouse, GrabState::resting);
  EXPECT_EQ(middle, 0);
  kernel(kMouse).send({event(EV_KEY, BTN_LEFT, 0), report()});
  taps->setSessionActive(true);
  untilState(kMouse, GrabState::grabbed);
}

TEST_F(LinuxEventTapsTest, aForeignGrabIsNamedOnceAndStaysInTheStatus) {
  kernel(kMouse).grabError = EBUSY;
  install();
  int changes = 0;
  const Observation observation = taps->observeStatus([&changes] { ++changes; });
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::refused);
  queue.runDue();
  EXPECT_GE(changes, 1);
  taps->reconsider();
  until([&] { return opens(kMouse) >= 2; });
  untilState(kMouse, GrabState::refused);
  queue.runDue();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find("EBUSY"), std::string::npos);
  EXPECT_NE(told[0].find(kMouse), std::string::npos);
  EXPECT_EQ(taps->status()[0].status.error, EBUSY);
  EXPECT_EQ(taps->status()[0].trouble, told[0]);
  EXPECT_EQ(taps->status()[1].trouble, "");
}

TEST_F(LinuxEventTapsTest, aForeignGrabIsTriedAgainWhenTheListenersStartAnew) {
  kernel(kMouse).grabError = EBUSY;
  install();
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::refused);
  {
    const std::lock_guard guard(kernel(kMouse).lock);
    kernel(kMouse).grabError = 0;
  }
  session.reset();
  install();
  untilState(kMouse, GrabState::grabbed);
  queue.runDue();
  EXPECT_EQ(taps->status()[0].trouble, "");
}

TEST_F(LinuxEventTapsTest, aForeignGrabIsTriedAgainWhenTheSessionComesBack) {
  kernel(kMouse).grabError = EBUSY;
  install();
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::refused);
  taps->setSessionActive(false);
  untilState(kMouse, GrabState::resting);
  {
    const std::lock_guard guard(kernel(kMouse).lock);
    kernel(kMouse).grabError = 0;
  }
  taps->setSessionActive(true);
  untilState(kMouse, GrabState::grabbed);
}

TEST_F(LinuxEventTapsTest, aLostGuardIsTold) {
  install();
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::grabbed);
  kernel(kMouse).loseGuard();
  until([this] { return !told.empty(); });
  EXPECT_NE(told[0].find("guard"), std::string::npos);
  EXPECT_NE(told[0].find(kMouse), std::string::npos);
  untilState(kMouse, GrabState::grabbed);
}

TEST_F(LinuxEventTapsTest, whereNothingCanBeMirroredClicksAreWatched) {
  mirrors = false;
  hid = taps->install(TapLocation::hid, 0x1E,
                      {.event =
                           [this](TappedEvent& event) {
                             heard.push_back(static_cast<int>(event.type()));
                             return TapAnswer::pass;
                           },
                       .disabled = [](TapDisabled) {}});
  hid->enable(true);
  taps->setNeeds({.mouseClicks = true});
  queue.runDue();
  ASSERT_TRUE(seenBy.contains(kMouse));
  seenBy[kMouse](BTN_MIDDLE, true);
  seenBy[kMouse](BTN_MIDDLE, false);
  seenBy[kMouse](BTN_RIGHT, true);
  EXPECT_EQ(heard, (std::vector{1, 2, 3}));
}

TEST_F(LinuxEventTapsTest, anUnpluggedDeviceIsForgottenAndANewOneTaken) {
  install();
  taps->setNeeds({.mouseClicks = true});
  untilState(kMouse, GrabState::grabbed);
  kernel(kMouse).unplug();
  untilState(kMouse, GrabState::gone);
  plug(kMouse, magicMouse());
  taps->reconsider();
  untilState(kMouse, GrabState::grabbed);
  EXPECT_EQ(kernel(kMouse).grabs, 1);
}

// Three devices click, move, lose events and are restarted, all at once.
TEST_F(LinuxEventTapsTest, noButtonSticksHoweverMuchHappensAtOnce) {
  converts = true;
  plug(kSecondMouse, magicMouse());
  const std::array<std::string, 3> all = {kMouse, kPad, kSecondMouse};
  install();
  const TapNeeds needs = {.mouseClicks = true, .mouseGestures = true, .trackpadClicks = true};
  taps->setNeeds(needs);
  for (const std::string& path : all) untilState(path, GrabState::grabbed);
  std::atomic<bool> done{false};
  const auto hand = [&](const std::string& path) {
    for (int i = 0; i < 400; ++i) {
      FakeKernel& device = kernel(path);
      const auto button = static_cast<unsigned>(i % 3 == 0 ? BTN_RIGHT : BTN_LEFT);
      device.send({event(EV_REL, REL_X, 1), event(EV_KEY, button, 1), report()});
      if (i % 17 == 0) device.send({event(EV_SYN, SYN_DROPPED, 0), report()});
      if (i % 100 == 50) device.loseGuard();
      device.send({event(EV_KEY, button, 0), report()});
    }
  };
  std::thread waiting([&] {
    std::vector<std::thread> hands;
    for (const std::string& path : all) hands.emplace_back(hand, path);
    for (std::thread& each : hands) each.join();
    done = true;
  });
  for (int i = 0; !done; ++i) {
    queue.runDue();
    if (i % 50 == 10) {
      session.reset();
      install();
    }
    if (i % 200 == 100) taps->setNeeds({});
    if (i % 200 == 150) taps->setNeeds(needs);
    if (i % 300 == 120) taps->setSessionActive(false);
    if (i % 300 == 160) taps->setSessionActive(true);
    if (i % 90 == 30) clock.advance(DeviceMirror::kAnswerWithin);
    std::this_thread::yield();
  }
  waiting.join();
  session.reset();
  for (const std::string& path : all) untilState(path, GrabState::resting);
  queue.runDue();
  EXPECT_EQ(middle, 0);
  for (const std::string& path : all) {
    EXPECT_TRUE(kernel(path).mirrorDown.empty());
    EXPECT_FALSE(kernel(path).grabbed);
    EXPECT_FALSE(kernel(path).mirrored);
    EXPECT_FALSE(kernel(path).guarded);
  }
}

}  // namespace
}  // namespace velotap::test
