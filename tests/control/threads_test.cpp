// Frames of several devices on their own threads against everything that the main thread does
// meanwhile. Made for the thread sanitizer and for the lock-order check of debug builds; the loops
// are bounded and nobody sleeps.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "control/services.hpp"
#include "support/desktop.hpp"
#include "support/random_hand.hpp"

namespace velotap {
namespace {

using Type = MouseEventType;

class Threads : public ::testing::Test, protected test::Desktop {
 protected:
  static constexpr int kFrames = 4000;

  Threads() {
    for (const std::int32_t family : {128, 112, 129, 113}) {
      multitouch.add({.name = std::to_string(family), .family = family});
    }
    activate(kApps[0]);
    systemPreferences.set("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerDrag", 1);
    for (const char* key : {"mouseClick2", "mouseRotate", "mouseSwipe3Nav", "padTap4"}) {
      services.defaults.set(key, true);
    }
  }
  ~Threads() override { join(); }

  /// One thread for each device, as a multitouch library has it.
  void playFrames() {
    for (const std::uint32_t family : {128U, 112U, 129U, 113U}) {
      players_.emplace_back([this, family] {
        const std::string device = std::to_string(family);
        test::RandomHand hand(family);
        for (int i = 0; i < kFrames; ++i) {
          const test::Frame contacts = hand.next();
          multitouch.deliver(device, contacts.data(), static_cast<std::int32_t>(contacts.size()));
          if (hand.chance(20)) multitouch.deliver(device, nullptr, 0);
        }
        multitouch.deliver(device, nullptr, 0);
        ++finished_;
      });
    }
  }
  [[nodiscard]] bool playing() const { return finished_ < static_cast<int>(players_.size()); }
  void join() {
    for (auto& player : players_) {
      if (player.joinable()) player.join();
    }
  }
  /// The main thread's part: `step` over and over until the frames are through, at least once for
  /// each of a hundred of them, and never without end.
  template <typename Step>
  void meanwhile(Step step) {
    playFrames();
    for (int i = 0; i < 200 || (playing() && i < 1000000); ++i) {
      step(i);
      clock.advanceTo(clock.now() + std::chrono::milliseconds(2));
    }
    join();
    services.controller.stop();
    EXPECT_FALSE(services.engine.hasActiveContact());
    EXPECT_FALSE(services.pinch.isPinching());
    EXPECT_EQ(multitouch.heldReferences(), 0U);
    EXPECT_EQ(multitouch.faults(), test::Lines{});
  }

  static constexpr const char* kApps[] = {"com.example.editor", "com.example.browser",
                                          "app.norwend.velotap"};
  Services services{platform};
  test::RandomHand chance_{77};

 private:
  std::vector<std::thread> players_;
  std::atomic<int> finished_ = 0;
};

TEST_F(Threads, FramesAndClicks) {
  services.launch();
  std::int64_t number = 1;
  meanwhile([&](int) {
    const bool hardware = !chance_.chance(4);
    static_cast<void>(button(Type::leftDown, ++number, hardware));
    static_cast<void>(button(Type::leftDragged, number, hardware));
    static_cast<void>(button(Type::leftUp, number, hardware));
    static_cast<void>(button(Type::rightDown, ++number, hardware));
    static_cast<void>(button(Type::rightUp, number, hardware));
  });
}

TEST_F(Threads, FramesAndLostTaps) {
  services.launch();
  std::int64_t number = 1;
  meanwhile([&](int i) {
    static_cast<void>(button(Type::leftDown, ++number));
    if (i % 3 == 0) taps.disable(TapLocation::hid, TapDisabled::byTimeout, i % 7 != 0);
    taps.disable(TapLocation::session, TapDisabled::byUserInput, i % 7 != 0);
    if (!services.controller.isRunning()) services.controller.start();
  });
}

TEST_F(Threads, FramesAndRestarts) {
  services.launch();
  meanwhile([&](int i) {
    if (i % 10 == 0) services.controller.restart();
    static_cast<void>(services.engine.connectedDeviceClasses());
    static_cast<void>(services.engine.hasActiveContact());
    if (i % 25 == 0) notices.displayReconfigured();
    mainQueue.runDue();
    multitouch.takeCalls();
  });
}

TEST_F(Threads, FramesAndApplications) {
  services.launch();
  meanwhile([&](int i) {
    activate(kApps[chance_.below(3)]);
    if (i % 3 == 0) services.practice.set(Rect{0, 0, 2000, 2000});
    if (i % 3 == 1) services.practice.set(std::nullopt);
    if (i % 5 == 0) events.setPointer(Point{static_cast<double>(i), 5});
    if (i % 20 == 0) services.config.setIgnoredApps({kApps[chance_.below(3)]});
    if (i % 20 == 10) services.config.setKeystrokeZoomApps({kApps[chance_.below(3)]});
    static_cast<void>(services.engine.shouldConvertClick(ClickPolicy::Button::left));
    services.engine.endConversion(ClickPolicy::Button::left);
  });
}

TEST_F(Threads, FramesAndSettings) {
  services.launch();
  meanwhile([&](int i) {
    for (const char* key : {"mouseTap3", "padTap3", "padTap4", "mousePinchZoom", "mouseRotate",
                            "mouseSwipe3Nav", "mouseClick2"}) {
      services.defaults.set(key, !chance_.chance(4));
    }
    services.defaults.set("enabled", !chance_.chance(8));
    services.defaults.set("maxTapDurationMs", static_cast<int>(50 + chance_.below(500)));
    services.defaults.set("maxTapDrift", chance_.below(100) / 500.0);
    services.defaults.set("pinchSensitivity", 0.5 + chance_.below(4));
    if (i % 10 == 0)
      keyboardLayout.select({{{static_cast<std::uint16_t>(chance_.below(65)), "["}}});
    if (i % 10 == 5) keyboardLayout.select(std::nullopt);
  });
}

TEST_F(Threads, FramesAndReaders) {
  services.launch();
  int seen = 0;
  const Observation changes = notifications.observe(kTapActivityDidChange, [&seen] { ++seen; });
  meanwhile([&](int i) {
    EXPECT_LE(services.activity.items().size(), TapActivityLog::kCapacity);
    mainQueue.runDue();
    if (i % 50 == 0) services.activity.clear();
    posted.take();
    posted.takeGestures();
    said.take();
    log.setEnabled(i % 2 == 0);
  });
  mainQueue.runDue();
  EXPECT_GT(seen, 0);
}

TEST_F(Threads, EverythingAtOnce) {
  services.launch();
  std::int64_t number = 1;
  meanwhile([&](int i) {
    switch (i % 9) {
      case 0:
        static_cast<void>(button(Type::leftDown, ++number, i % 2 == 0));
        break;
      case 1:
        static_cast<void>(button(Type::leftUp, number));
        break;
      case 2:
        activate(kApps[chance_.below(3)]);
        break;
      case 3:
        services.config.setIgnoredApps(
            {chance_.chance(4) ? kApps[chance_.below(3)] : "com.example.none"});
        break;
      case 4:
        services.defaults.set("enabled", !chance_.chance(10));
        break;
      case 5:
        if (chance_.chance(10)) services.controller.restart();
        break;
      case 6:
        taps.disable(TapLocation::session, TapDisabled::byTimeout, true);
        break;
      case 7:
        services.controller.start();
        break;
      case 8:
        static_cast<void>(services.activity.items());
        break;
    }
    mainQueue.runDue();
  });
}

}  // namespace
}  // namespace velotap
