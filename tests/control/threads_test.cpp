// Frames of several devices on their own threads against everything that the main thread does
// meanwhile. Made for the thread sanitizer and for the lock-order check of debug builds; the loops
// are bounded and nobody sleeps.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "control/services.hpp"
#include "support/ports.hpp"
#include "support/random_hand.hpp"

namespace velotap {
namespace {

using Type = MouseEventType;

class Threads : public ::testing::Test, protected test::Ports {
 protected:
  static constexpr int kFrames = 4000;

  Threads() {
    for (const std::int32_t family : {128, 112, 129, 113}) library.add("device", family);
    workspace.setFront(RunningApplication{AppId::intern(kApps[0]), ""});
    system.set("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerDrag", 1);
    for (const char* key : {"mouseClick2", "mouseRotate", "mouseSwipe3Nav", "padTap4"}) {
      services.defaults.set(key, true);
    }
  }
  ~Threads() override { join(); }

  /// One thread for each device, as a multitouch library has it.
  void playFrames() {
    std::uint32_t seed = 1;
    for (auto& device : library.devices) {
      players_.emplace_back([this, &device, seed] {
        test::RandomHand hand(seed);
        for (int i = 0; i < kFrames; ++i) {
          library.deliver(device, hand.next());
          if (hand.chance(20)) library.deliver(device, nullptr, 0);
          delivered_.fetch_add(1, std::memory_order_relaxed);
        }
        library.deliver(device, nullptr, 0);
        ++finished_;
      });
      ++seed;
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
      clock.advance(0.002);
    }
    join();
    services.controller.stop();
    EXPECT_FALSE(services.engine.hasActiveContact());
    EXPECT_FALSE(services.pinch.isPinching());
    for (const auto& device : library.devices) EXPECT_EQ(device.references, 0);
  }

  static constexpr const char* kApps[] = {"com.example.editor", "com.example.browser",
                                          "app.norwend.velotap"};
  Services services{platform};
  test::RandomHand chance_{77};

 private:
  std::vector<std::thread> players_;
  std::atomic<int> finished_ = 0;
  std::atomic<int> delivered_ = 0;
};

TEST_F(Threads, FramesAndClicks) {
  services.launch();
  std::int64_t number = 1;
  meanwhile([&](int) {
    const bool hardware = !chance_.chance(4);
    static_cast<void>(taps.button(Type::leftDown, ++number, hardware));
    static_cast<void>(taps.button(Type::leftDragged, number, hardware));
    static_cast<void>(taps.button(Type::leftUp, number, hardware));
    static_cast<void>(taps.button(Type::rightDown, ++number, hardware));
    static_cast<void>(taps.button(Type::rightUp, number, hardware));
  });
}

TEST_F(Threads, FramesAndLostTaps) {
  services.launch();
  std::int64_t number = 1;
  meanwhile([&](int i) {
    static_cast<void>(taps.button(Type::leftDown, ++number));
    taps.revives = i % 7 != 0;
    if (taps.hid && i % 3 == 0) test::FakeTaps::disable(taps.hid, TapDisabled::byTimeout);
    if (taps.session) test::FakeTaps::disable(taps.session, TapDisabled::byUserInput);
    if (!services.controller.isRunning()) services.controller.start();
  });
}

TEST_F(Threads, FramesAndRestarts) {
  services.launch();
  meanwhile([&](int i) {
    if (i % 10 == 0) services.controller.restart();
    static_cast<void>(services.engine.connectedDeviceClasses());
    static_cast<void>(services.engine.hasActiveContact());
    if (i % 25 == 0) notices.displays.notify();
    queue.runDue();
    library.takeCalls();
  });
}

TEST_F(Threads, FramesAndApplications) {
  services.launch();
  meanwhile([&](int i) {
    workspace.activate(kApps[chance_.below(3)]);
    if (i % 3 == 0) services.practice.set(Rect{0, 0, 2000, 2000});
    if (i % 3 == 1) services.practice.set(std::nullopt);
    if (i % 5 == 0) events.movePointer(Point{static_cast<double>(i), 5});
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
    if (i % 10 == 0) layout.select({{{static_cast<std::uint16_t>(chance_.below(65)), "["}}});
    if (i % 10 == 5) layout.select(std::nullopt);
  });
}

TEST_F(Threads, FramesAndReaders) {
  services.launch();
  int seen = 0;
  const Observation changes = notifications.observe(kTapActivityDidChange, [&seen] { ++seen; });
  meanwhile([&](int i) {
    EXPECT_LE(services.activity.items().size(), TapActivityLog::kCapacity);
    queue.runDue();
    if (i % 50 == 0) services.activity.clear();
    events.take();
    events.takeGestures();
    log.take();
    log.on = i % 2 == 0;
  });
  queue.runDue();
  EXPECT_GT(seen, 0);
}

TEST_F(Threads, EverythingAtOnce) {
  services.launch();
  std::int64_t number = 1;
  meanwhile([&](int i) {
    switch (i % 9) {
      case 0:
        static_cast<void>(taps.button(Type::leftDown, ++number, i % 2 == 0));
        break;
      case 1:
        static_cast<void>(taps.button(Type::leftUp, number));
        break;
      case 2:
        workspace.activate(kApps[chance_.below(3)]);
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
        if (taps.session) test::FakeTaps::disable(taps.session, TapDisabled::byTimeout);
        break;
      case 7:
        services.controller.start();
        break;
      case 8:
        static_cast<void>(services.activity.items());
        break;
    }
    queue.runDue();
  });
}

}  // namespace
}  // namespace velotap
