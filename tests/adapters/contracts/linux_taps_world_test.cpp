// The promises of event taps over a mouse that is taken over, whose kernel is the test.
#include <atomic>
#include <thread>

#include "adapters/linux/clicks/linux_event_taps.hpp"
#include "event_taps_contract.hpp"
#include "linux/clicks/fake_hardware.hpp"
#include "linux/evdev/event_maker.hpp"
#include "support/virtual_time.hpp"

namespace velotap::test {
namespace {

constexpr const char* kMouse = "/dev/input/event3";

class LinuxTapsWorld final : public EventTapsWorld {
 public:
  LinuxTapsWorld() {
    kernel_->block = true;
    taps_.setNeeds({.mouseClicks = true});
    // Wants no event, and so has the mouse taken over whatever the test's taps are doing.
    witness_ = taps_.install(TapLocation::session, 0,
                             {[](TappedEvent&) { return TapAnswer::pass; },
                              [this](TapDisabled) {
                                ++timeouts_;
                                witness_->enable(true);
                              }});
    witness_->enable(true);
    until([this] { return state() == GrabState::grabbed; });
  }
  ~LinuxTapsWorld() override { witness_.reset(); }

  EventTaps& taps() override { return taps_; }

  std::optional<WorldEvent> click(WorldEvent press) override {
    const int before = middle_;
    const bool left = press == kLeftPress;
    written_.clear();
    const unsigned button = left ? BTN_LEFT : BTN_RIGHT;
    send(button);
    // Clicks keep their order, so that one of the other button tells that the first is settled.
    if (left) send(BTN_RIGHT);
    until([this] { return wrote("-273"); });
    if (middle_ > before) return WorldEvent{MouseEventType::otherDown, kMiddleButton};
    return wrote("+" + std::to_string(button)) ? std::optional(press) : std::nullopt;
  }

  void timeOut() override {
    const int before = timeouts_;
    written_.clear();
    send(BTN_LEFT);
    // The main thread does not answer until the press has left without its answer.
    while (!wrote("+272")) {
      clock_.advance(DeviceMirror::kAnswerWithin);
      std::this_thread::yield();
    }
    until([this, before] { return timeouts_ > before && wrote("-272"); });
  }

 private:
  [[nodiscard]] GrabState state() const {
    const auto devices = taps_.status();
    return devices.empty() ? GrabState::resting : devices[0].status.state;
  }
  void send(unsigned button) {
    kernel_->send({event(EV_KEY, button, 1), report()});
    kernel_->send({event(EV_KEY, button, 0), report()});
  }
  [[nodiscard]] bool wrote(const std::string& what) {
    written_ += kernel_->take();
    return written_.find(what) != std::string::npos;
  }
  /// Serves the main thread until something is so.
  void until(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
      ASSERT_LT(std::chrono::steady_clock::now(), limit);
      queue_.runDue();
      std::this_thread::yield();
    }
  }

  ExactClock clock_;
  VirtualQueue queue_{clock_};
  std::shared_ptr<FakeKernel> kernel_ = std::make_shared<FakeKernel>(clock_);
  std::atomic<int> middle_{0};  // presses
  int timeouts_ = 0;
  std::string written_;
  LinuxEventTaps taps_{LinuxEventTaps::Links{
      .queue = queue_,
      .clock = clock_,
      .surfaces = [] { return std::vector<std::string>{kMouse}; },
      .hardware =
          [this](const std::string& path) {
            return std::make_unique<FakeHardware>(kernel_, path, magicMouse());
          },
      .observer = [](const std::string&,
                     const ClickObserver::Seen&) { return std::unique_ptr<ClickObserver>(); },
      .desktopAnswers = [](const EvdevDevice&) { return false; },
      .middle = [this](bool down) { middle_ += down ? 1 : 0; },
      .tell = [](const std::string& text) { ADD_FAILURE() << text; },
      .note = [](const std::string&) {}}};
  std::unique_ptr<InstalledTap> witness_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, EventTapsContract, LinuxTapsWorld);

}  // namespace
}  // namespace velotap::test
