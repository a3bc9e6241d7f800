// Frames from anywhere: the input is a small program of raw records, plausible hands, clicks, lost
// taps, settings and application switches, played on the core with three devices.
//
// Beyond the sanitizers it checks what must hold whatever comes: events are finite and within their
// limits, a gesture that began ends exactly once while its application stays in front, no button
// stays down after a stop, and memory behind the records of a frame is not looked at.

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cinttypes>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <variant>

#include "adapters/simulated/simulated_desktop.hpp"
#include "control/services.hpp"
#include "support/touches.hpp"

namespace velotap {
namespace {

void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "frame_fuzzer: violated: %s\n", what);
  std::abort();
}

// What a run amounted to, printed at its end: a fuzzer that never begins a gesture proves nothing.
struct Tally {
  std::uint64_t frames = 0;  ///< that reached the engine
  std::uint64_t clicks = 0;
  std::uint64_t conversions = 0;
  std::uint64_t shortcuts = 0;
  std::uint64_t gestures = 0;
} tally;

class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
  [[nodiscard]] bool empty() const { return bytes_.empty(); }
  std::uint8_t byte() {
    if (bytes_.empty()) return 0;
    const std::uint8_t first = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return first;
  }
  /// Signed, within ±1.
  float part() { return static_cast<float>(static_cast<std::int8_t>(byte())) / 128.0F; }
  /// Fills as much as is there; the rest stays as it was.
  void copyTo(void* to, std::size_t size) {
    const std::size_t n = std::min(size, bytes_.size());
    if (n > 0) std::memcpy(to, bytes_.data(), n);
    bytes_ = bytes_.subspan(n);
  }

 private:
  std::span<const std::uint8_t> bytes_;
};

// Judges what is posted.
class Judge {
 public:
  bool mayLoseEnds = false;  ///< the application went away: its gesture may end in silence
  bool middleHeld = false;   ///< a converted press is down

  void operator()(const MouseEvent& event) {
    check(event.button == kMiddleButton, "only middle buttons are posted");
    if (event.type == MouseEventType::otherDown) {
      check(!inClick_, "a click is whole before the next begins");
      ++tally.clicks;
      inClick_ = true;
    } else if (inClick_) {
      inClick_ = false;
    } else {
      check(middleHeld, "a lone release ends a converted press");
      middleHeld = false;
    }
  }
  void operator()(const KeyEvent& event) {
    check(event.flags == kCommandFlag, "every shortcut has the Command key");
    check(event.down != keyDown_, "presses and releases alternate");
    keyDown_ = event.down;
    tally.shortcuts += event.down ? 1 : 0;
  }
  void operator()(const GestureEvent& event) {
    check(std::isfinite(event.location.x) && std::isfinite(event.location.y), "a place on screen");
    const double limit = event.kind == GestureKind::magnify ? 0.1 : 180;
    check(std::abs(event.value) <= limit, "the step is within its limit");
    int& running = running_[static_cast<std::size_t>(event.kind)];
    switch (event.phase) {
      case GesturePhase::began:
        ++running;
        ++tally.gestures;
        break;
      case GesturePhase::changed:
        check(running > 0, "a step belongs to a gesture that began");
        break;
      case GesturePhase::ended:
      case GesturePhase::cancelled:
        check(running > 0, "an end belongs to a gesture that began");
        --running;
        break;
    }
  }
  void atRest() const {
    check(!inClick_ && !keyDown_, "nothing posted stays down");
    check(mayLoseEnds || (running_[0] == 0 && running_[1] == 0), "every gesture ended");
  }

 private:
  bool inClick_ = false;
  bool keyDown_ = false;
  std::array<int, 2> running_ = {0, 0};
};

constexpr const char* kApps[] = {"com.example.editor", "com.example.browser",
                                 "app.norwend.velotap"};
constexpr std::array kSwitches = {
    "enabled", "mouseClick1Center", "mouseClick2",    "mouseClick3", "mouseTap3",     "padClick3",
    "padTap3", "padTap4",           "mousePinchZoom", "mouseRotate", "mouseSwipe3Nav"};
constexpr std::array kNumbers = {"maxTapDurationMs", "maxTapDrift", "pinchSensitivity",
                                 "centerMinX", "centerMaxX"};

constexpr std::array kDevices = {"pad", "mouse", "second mouse"};

class Player {
 public:
  Player() {
    desktop_.multitouch.add({.name = kDevices[0], .family = 128});
    desktop_.multitouch.add({.name = kDevices[1], .family = 112});
    desktop_.multitouch.add({.name = kDevices[2], .family = 113});
    desktop_.systemPreferences.set("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerDrag",
                                   1);
    services_.defaults.set("mouseRotate", true);
    services_.launch();
    for (const char* device : kDevices) desktop_.multitouch.deliver(device, nullptr, 0);
  }

  void play(Input input) {
    while (!input.empty()) step(input);
    services_.controller.stop();
    judge_.atRest();
    check(!judge_.middleHeld, "no button stays down after a stop");
    check(!services_.engine.hasActiveContact(), "no contact outlives a stop");
    check(!services_.pinch.isPinching(), "no pinch outlives a stop");
    check(desktop_.multitouch.heldReferences() == 0, "every device was given back");
    check(desktop_.multitouch.faults().empty(), "the library was used as it wants to be");
  }

 private:
  void step(Input& input) {
    const std::uint8_t op = input.byte();
    const char* device = kDevices[(op >> 5) % kDevices.size()];
    switch (op % 32) {
      case 0:
        rawFrame(device, input);
        break;
      case 1:
        changeSetting(input);
        break;
      case 2:
        switchApplication(input);
        break;
      case 3:
        loseTap(input.byte());
        break;
      case 4:
        control(input.byte());
        break;
      case 5:
        look(input.byte());
        break;
      case 6:
        pass(input.byte() / 256.0);
        break;
      case 7:
      case 8:
      case 9:
      case 10:
        click(input.byte());
        break;
      case 11:
      case 12:
      case 13:
        deliver(device, 0);
        break;
      case 14:
      case 15:
        deliver(device, held_);
        break;
      case 16:
      case 17:
      case 18:
      case 19:
      case 20:
        land(device, input);
        break;
      default:
        move(device, input);
    }
  }

  // The records stand at the end of their memory, so that one too many is somebody else's.
  MTTouch* records(std::size_t n) { return &memory_[kMaxFingers - n]; }

  void pass(double seconds) {
    desktop_.mainQueue.runUntil(desktop_.clock.now() + virtualTime(seconds));
  }
  void frame(const char* device, const MTTouch* touches, std::int32_t count) {
    if (desktop_.multitouch.deliver(device, touches, count)) ++tally.frames;
    desktop_.clock.advanceTo(desktop_.clock.now() + std::chrono::milliseconds(8));
  }
  void deliver(const char* device, std::size_t n) {
    frame(device, records(n), static_cast<std::int32_t>(n));
    held_ = n;
  }
  void rawFrame(const char* device, Input& input) {
    std::int32_t count = 0;
    input.copyTo(&count, input.byte() % 5);
    const auto n = static_cast<std::size_t>(std::clamp(count, 0, 16));
    for (std::size_t i = 0; i < n; ++i) {
      std::array<std::byte, sizeof(MTTouch)> bytes{};
      input.copyTo(bytes.data(), bytes.size());
      records(n)[i] = std::bit_cast<MTTouch>(bytes);
    }
    frame(device, n == 16 && (count & 64) != 0 ? nullptr : records(n), count);
    held_ = n;
  }
  void land(const char* device, Input& input) {
    const std::size_t n = input.byte() % 6;
    for (std::size_t i = 0; i < n; ++i) {
      const std::uint8_t traits = input.byte();
      records(n)[i] = test::touch({.id = traits % 8,
                                   .x = 0.5F + input.part() / 2,
                                   .y = 0.5F + input.part() / 2,
                                   .stage = traits >= 0xF0 ? 2 : 4,
                                   .vx = (traits & 8) != 0 && (traits & 16) != 0 ? 4.0F : 0.0F,
                                   .size = (traits & 0xE0) == 0x20 ? 0.2F : 1.0F});
    }
    deliver(device, n);
  }
  /// Fingers side by side, firm and still, for those who move next.
  void rest(std::size_t n) {
    held_ = n;
    std::ranges::copy(test::row(static_cast<int>(n)), records(n));
  }
  /// The contacts of the last frame move together, apart, or around each other for some frames.
  void move(const char* device, Input& input) {
    const int frames = 1 + input.byte() % 16;
    const float dx = input.part() / 16;
    const float spread = input.part() / 8;
    const float turn = input.part() / 8;
    if (held_ == 0) rest(2 + static_cast<std::size_t>(frames % 2));
    for (int i = 0; i < frames; ++i) {
      moveOnce(dx, spread, turn);
      deliver(device, held_);
    }
  }
  void moveOnce(float dx, float spread, float turn) {
    MTTouch* const touches = records(held_);
    MTPoint centre;
    for (std::size_t i = 0; i < held_; ++i) {
      centre.x += touches[i].position.x / static_cast<float>(held_);
      centre.y += touches[i].position.y / static_cast<float>(held_);
    }
    for (std::size_t i = 0; i < held_; ++i) {
      const MTPoint from = {touches[i].position.x - centre.x, touches[i].position.y - centre.y};
      touches[i].position.x += dx + from.x * spread - from.y * turn;
      touches[i].position.y += from.y * spread + from.x * turn;
      touches[i].millimetres = {touches[i].position.x * 60, touches[i].position.y * 100};
    }
  }

  void changeSetting(Input& input) {
    const std::uint8_t which = input.byte();
    const std::uint8_t value = input.byte();
    if (which % 3 == 0) {
      services_.defaults.set(kNumbers[which / 3 % kNumbers.size()],
                             value == 255 ? Value("text") : Value(value / 64.0 * (which & 64)));
      return;
    }
    services_.defaults.set(kSwitches[which % kSwitches.size()], value % 4 != 0);
  }
  void switchApplication(Input& input) {
    const std::uint8_t how = input.byte();
    const char* app = kApps[how % std::size(kApps)];
    judge_.mayLoseEnds = true;
    switch (how >> 2 & 7) {
      case 0:
      case 1:
        desktop_.workspace.activate(RunningApplication{AppId::intern(app), ""});
        break;
      case 2:
        desktop_.workspace.activate(std::nullopt);
        break;
      case 3:
        desktop_.workspace.setLive(AppId::intern(app));
        break;
      case 4:
        services_.config.setIgnoredApps({app});
        break;
      case 5:
        services_.config.setIgnoredApps({});
        break;
      case 6:
        services_.config.setKeystrokeZoomApps({app});
        break;
      default:
        services_.practice.set(Rect{0, 0, static_cast<double>(how), 20});
    }
  }
  void click(std::uint8_t how) {
    constexpr std::array kTypes = {MouseEventType::leftDown,    MouseEventType::leftUp,
                                   MouseEventType::rightDown,   MouseEventType::rightUp,
                                   MouseEventType::leftDragged, MouseEventType::rightDragged};
    const MouseEventType type = kTypes[how % kTypes.size()];
    const auto out = desktop_.taps.send({.type = type, .button = 0, .number = how >> 5},
                                        (how & 16) == 0 ? EventOrigin::hid : EventOrigin::session);
    if (!out || out->type == type) return;
    check(out->button == kMiddleButton, "what is converted is a middle button");
    if (out->type == MouseEventType::otherDown) {
      check(!judge_.middleHeld, "a converted press is not pressed again");
      judge_.middleHeld = true;
      ++tally.conversions;
    } else if (out->type == MouseEventType::otherUp) {
      check(judge_.middleHeld, "a converted release had its press");
      judge_.middleHeld = false;
    } else {
      check(judge_.middleHeld, "a converted drag had its press");
    }
  }
  void loseTap(std::uint8_t how) {
    const bool hid = (how & 1) != 0;
    const bool runs = services_.controller.isRunning();
    desktop_.taps.disable(hid ? TapLocation::hid : TapLocation::session, TapDisabled::byTimeout,
                          how % 16 > 1);
    check(hid || !runs || !judge_.middleHeld, "a lost tap holds no button");
  }
  void control(std::uint8_t how) {
    switch (how % 32) {
      case 0:
        services_.controller.stop();
        check(!judge_.middleHeld, "no button stays down after a stop");
        break;
      case 1:
        services_.controller.restart();
        break;
      case 2:
        desktop_.notices.displayReconfigured();
        break;
      case 3:
        desktop_.notices.willSleep();
        break;
      default:
        services_.controller.start();
    }
    desktop_.mainQueue.runDue();
    desktop_.multitouch.takeCalls();
  }
  void look(std::uint8_t how) {
    desktop_.log.setEnabled(how == 255);
    pass(how % 4);
    for (const TapActivity& item : services_.activity.items()) {
      check(item.duration >= 0 && item.drift >= 0 && item.fingers >= 1 && item.fingers <= 16,
            "a recorded tap is a tap");
    }
  }

  SimulatedDesktop desktop_;
  Judge judge_;
  Observation judging_ =
      desktop_.events.observePosts([this](const PostedEvent& event) { std::visit(judge_, event); });
  Services services_{desktop_.platform};
  std::unique_ptr<MTTouch[]> memory_ = std::make_unique<MTTouch[]>(kMaxFingers);
  std::size_t held_ = 0;  ///< records of the last frame
};

}  // namespace
}  // namespace velotap

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::atexit([] {
    const auto& tally = velotap::tally;
    std::fprintf(stderr,
                 "frame_fuzzer: %" PRIu64 " frames, %" PRIu64 " clicks, %" PRIu64
                 " conversions, %" PRIu64 " shortcuts, %" PRIu64 " gestures\n",
                 tally.frames, tally.clicks, tally.conversions, tally.shortcuts, tally.gestures);
  });
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velotap::Player().play(velotap::Input({data, size}));
  return 0;
}
