#include "adapters/linux/clicks/tap_chain.hpp"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <utility>

namespace velotap {
namespace {

MouseEventType typeOf(const Click& click) {
  if (click.button == BTN_LEFT) {
    return click.down ? MouseEventType::leftDown : MouseEventType::leftUp;
  }
  if (click.button == BTN_RIGHT) {
    return click.down ? MouseEventType::rightDown : MouseEventType::rightUp;
  }
  return click.down ? MouseEventType::otherDown : MouseEventType::otherUp;
}

bool wants(std::uint64_t mask, MouseEventType type) {
  const auto code = static_cast<unsigned>(type);
  return code < 64 && (mask >> code & 1U) != 0;
}

}  // namespace

struct TapChain::Tap {
  TapLocation location;
  std::uint64_t mask;
  EventTaps::Callbacks callbacks;
  bool enabled = false;
};

struct TapChain::State {
  std::vector<std::shared_ptr<Tap>> taps;  // newest first
  std::function<void()> changed;
  std::atomic<bool> active{false};
  std::atomic<bool> suspended{false};
  std::atomic<std::int64_t> lastNumber{0};

  [[nodiscard]] std::vector<std::shared_ptr<Tap>> tapsAt(TapLocation location) const {
    std::vector<std::shared_ptr<Tap>> found;
    for (const auto& tap : taps) {
      if (tap->location == location) found.push_back(tap);
    }
    return found;
  }
  void refresh() {
    active = std::any_of(taps.begin(), taps.end(), [](const auto& tap) { return tap->enabled; });
    if (const auto call = changed) call();
  }
};

class TapChain::Event final : public TappedEvent {
 public:
  explicit Event(const Click& click) : type_(typeOf(click)), number_(click.number) {}
  [[nodiscard]] MouseEventType type() const override { return type_; }
  [[nodiscard]] std::int64_t number() const override { return number_; }
  void setType(MouseEventType type) override { type_ = type; }
  void setButton(int button) override { button_ = button; }
  [[nodiscard]] bool isMiddlePress() const {
    return type_ == MouseEventType::otherDown && button_ == kMiddleButton;
  }

 private:
  MouseEventType type_;
  std::int64_t number_;
  int button_ = -1;  // until somebody says otherwise it is what it came as
};

// Taps outlive the chain no more than the chain outlives them.
class TapChain::Handle final : public InstalledTap {
 public:
  Handle(std::shared_ptr<State> state, std::shared_ptr<Tap> tap)
      : state_(std::move(state)), tap_(std::move(tap)) {}
  ~Handle() override {
    tap_->enabled = false;
    std::erase(state_->taps, tap_);
    state_->refresh();
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  void enable(bool on) override {
    if (tap_->enabled == on) return;
    tap_->enabled = on;
    state_->refresh();
  }
  [[nodiscard]] bool enabled() const override { return tap_->enabled; }

 private:
  std::shared_ptr<State> state_;
  std::shared_ptr<Tap> tap_;
};

TapChain::TapChain() : state_(std::make_shared<State>()) {}

TapChain::~TapChain() {
  state_->changed = nullptr;
}

void TapChain::setChanged(std::function<void()> changed) {
  state_->changed = std::move(changed);
}

std::unique_ptr<InstalledTap> TapChain::install(TapLocation location, std::uint64_t mask,
                                                EventTaps::Callbacks callbacks) {
  auto tap = std::make_shared<Tap>(
      Tap{.location = location, .mask = mask, .callbacks = std::move(callbacks)});
  state_->taps.insert(state_->taps.begin(), tap);
  return std::make_unique<Handle>(state_, std::move(tap));
}

PressAnswer TapChain::pass(const Click& click) {
  Event event(click);
  for (const TapLocation location : {TapLocation::hid, TapLocation::session}) {
    for (const auto& tap : state_->tapsAt(location)) {
      if (!tap->enabled || !wants(tap->mask, event.type())) continue;
      if (tap->callbacks.event(event) == TapAnswer::drop) return PressAnswer::dropped;
    }
  }
  return event.isMiddlePress() ? PressAnswer::middle : PressAnswer::unchanged;
}

void TapChain::observe(const Click& click) {
  Event event(click);
  for (const auto& tap : state_->tapsAt(TapLocation::hid)) {
    if (tap->enabled && wants(tap->mask, event.type())) tap->callbacks.event(event);
  }
}

void TapChain::reportTimeout(MainQueue& queue) {
  if (state_->suspended.exchange(true)) return;
  queue.async([weak = std::weak_ptr(state_)] {
    if (const auto state = weak.lock()) timedOut(*state);
  });
}

void TapChain::timedOut(State& state) {
  for (const TapLocation location : {TapLocation::hid, TapLocation::session}) {
    for (const auto& tap : state.tapsAt(location)) {
      if (!tap->enabled) continue;
      tap->enabled = false;
      tap->callbacks.disabled(TapDisabled::byTimeout);
    }
  }
  state.suspended = false;
  state.refresh();
}

bool TapChain::active() const noexcept {
  return state_->active && !state_->suspended;
}

std::int64_t TapChain::nextNumber() noexcept {
  return ++state_->lastNumber;
}

bool TapChain::mayRewrite() const {
  return std::any_of(state_->taps.begin(), state_->taps.end(), [](const auto& tap) {
    return tap->enabled && tap->location == TapLocation::session;
  });
}

}  // namespace velotap
