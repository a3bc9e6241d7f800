// Frames on their devices' threads while the main thread changes everything that decides about
// them: the application in front, the rules, the switches, the practice surface, the listeners.
// Meant for the thread sanitizer; what must hold in any order is checked besides.

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <thread>

#include "engine_fixture.hpp"
#include "support/random_hand.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

constexpr int kFrames = 6000;
constexpr int kChanges = 1500;

// Follows what one mouse brings about. Any thread.
class SharedJudge {
 public:
  explicit SharedJudge(SimulatedEventStream& events)
      : observation_(events.observePosts([this](const PostedEvent& event) { judge(event); })) {}

  /// The mouse's fingers have all lifted, and its frame was dealt with.
  void lifted() {
    const std::lock_guard guard(lock_);
    cancelled_ = false;
  }
  int began() {
    const std::lock_guard guard(lock_);
    return began_;
  }
  int keystrokes() {
    const std::lock_guard guard(lock_);
    return keystrokes_;
  }

 private:
  void judge(const PostedEvent& event) {
    const std::lock_guard guard(lock_);
    if (const auto* gesture = std::get_if<GestureEvent>(&event)) {
      judgeGesture(*gesture);
    } else if (std::holds_alternative<KeyEvent>(event)) {
      ++keystrokes_;
    }
  }
  void judgeGesture(const GestureEvent& event) {
    switch (event.phase) {
      case GesturePhase::began:
        EXPECT_FALSE(cancelled_) << "a gesture began before every finger had lifted";
        // The end of the last one may have been kept from an application that had left the front.
        running_ = event.kind;
        ++began_;
        break;
      case GesturePhase::changed:
        EXPECT_EQ(running_, event.kind);
        break;
      case GesturePhase::ended:
      case GesturePhase::cancelled:
        EXPECT_EQ(running_, event.kind);
        running_.reset();
        cancelled_ = cancelled_ || event.phase == GesturePhase::cancelled;
        break;
    }
  }

  std::mutex lock_;
  std::optional<GestureKind> running_;
  bool cancelled_ = false;
  int began_ = 0;
  int keystrokes_ = 0;
  Observation observation_;
};

class FrontThreads : public EngineTest {
 protected:
  FrontThreads() {
    log.setEnabled(false);
    posted.stop();
    set("mouseRotate", true);
    set("mouseClick2", true);
    set("mouseSwipe3Nav", true);
  }

  /// Plays a hand on a device until it has made all its frames.
  void playOn(const char* device, std::uint32_t seed) {
    RandomHand hand(seed);
    for (int i = 0; i < kFrames; ++i) {
      const Frame contacts = i + 1 < kFrames ? hand.next() : Frame{};
      deliver(device, contacts);
      if (device == mouse && contacts.empty()) judge_.lifted();
    }
  }

  /// One thing that a person, or the desktop, does.
  void changeSomething(RandomHand& chance) {
    constexpr const char* kApps[] = {kEditor, kBrowser, kOwnApp};
    const char* app = kApps[chance.below(3)];
    time.advance(0.01);
    switch (chance.below(12)) {
      case 0:
      case 1:
      case 2:
        activate(app);
        break;
      case 3:
        workspace.activate(std::nullopt);
        break;
      case 4:
        workspace.setLive(AppId::intern(app));
        break;
      case 5:
        config.setIgnoredApps(chance.chance(3) ? std::vector<std::string>{app}
                                               : std::vector<std::string>{});
        break;
      case 6:
        config.setKeystrokeZoomApps({app});
        break;
      case 7:
        set("mousePinchZoom", !chance.chance(4));
        break;
      case 8:
        set("enabled", !chance.chance(4));
        break;
      case 9:
        practice.set(chance.chance(2) ? std::optional(Rect{0, 0, 1000, 1000}) : std::nullopt);
        break;
      case 10:
        askAboutClicks();
        break;
      default:
        restartListeners(chance);
    }
  }
  void askAboutClicks() {
    engine.notePhysicalButtonDown();
    const bool converted = engine.shouldConvertClick(Button::left);
    EXPECT_EQ(engine.endConversion(Button::left), converted);
    static_cast<void>(engine.hasActiveContact());
    static_cast<void>(pinch.isPinching());
  }
  void restartListeners(RandomHand& chance) {
    if (!chance.chance(5)) return;
    engine.stop();
    EXPECT_FALSE(pinch.isPinching());
    EXPECT_TRUE(engine.start());
  }

  SharedJudge judge_{events};
};

TEST_F(FrontThreads, FramesMeetEveryChange) {
  std::thread mouseFrames([this] { playOn(mouse, 1); });
  std::thread padFrames([this] { playOn(pad, 2); });
  RandomHand chance(3);
  for (int i = 0; i < kChanges; ++i) changeSomething(chance);
  mouseFrames.join();
  padFrames.join();
  engine.stop();
  EXPECT_FALSE(pinch.isPinching());
  EXPECT_FALSE(engine.hasActiveContact());
  multitouch.takeCalls();
}

// The same hand with the rules alone changing: gestures and keystrokes really come about, and each
// belongs to one kind of application.
TEST_F(FrontThreads, RulesChangeUnderPinches) {
  std::atomic<bool> done = false;
  std::thread mouseFrames([&] {
    playOn(mouse, 4);
    done = true;
  });
  for (bool keystrokes = false; !done; keystrokes = !keystrokes) {
    config.setKeystrokeZoomApps(keystrokes ? std::vector<std::string>{kEditor}
                                           : std::vector<std::string>{});
    config.setIgnoredApps({kBrowser});
  }
  mouseFrames.join();
  EXPECT_GT(judge_.began() + judge_.keystrokes(), 0);
  EXPECT_FALSE(pinch.isPinching());
}

}  // namespace
}  // namespace velotap
