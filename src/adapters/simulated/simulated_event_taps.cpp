#include "adapters/simulated/simulated_event_taps.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace velotap {
namespace {

std::size_t indexOf(TapLocation location) {
  return static_cast<std::size_t>(location);
}

bool watches(std::uint64_t mask, MouseEventType type) {
  return (mask >> static_cast<unsigned>(type) & 1U) != 0;
}

class EventInTap final : public TappedEvent {
 public:
  explicit EventInTap(SystemMouseEvent& event) : event_(event) {}
  [[nodiscard]] MouseEventType type() const override { return event_.type; }
  [[nodiscard]] std::int64_t number() const override { return event_.number; }
  void setType(MouseEventType type) override { event_.type = type; }
  void setButton(int button) override { event_.button = button; }

 private:
  SystemMouseEvent& event_;
};

}  // namespace

struct SimulatedEventTaps::Tap {
  std::uint64_t mask = 0;
  Callbacks callbacks;
  bool enabled = false;
  bool removed = false;
  bool revives = true;

  [[nodiscard]] bool listens() const { return enabled && !removed; }
};

struct SimulatedEventTaps::State {
  using Taps = std::vector<std::shared_ptr<Tap>>;
  std::array<Taps, 2> taps;  // by location, the newest first
  std::array<bool, 2> installable = {true, true};

  void remove(const std::shared_ptr<Tap>& tap) {
    tap->removed = true;
    for (Taps& level : taps) std::erase(level, tap);
  }
};

class SimulatedEventTaps::Handle final : public InstalledTap {
 public:
  Handle(std::weak_ptr<State> state, std::shared_ptr<Tap> tap)
      : state_(std::move(state)), tap_(std::move(tap)) {}
  ~Handle() override {
    if (const auto state = state_.lock()) state->remove(tap_);
  }
  void enable(bool on) override { tap_->enabled = on && tap_->revives; }
  [[nodiscard]] bool enabled() const override { return tap_->enabled; }

 private:
  std::weak_ptr<State> state_;
  std::shared_ptr<Tap> tap_;
};

SimulatedEventTaps::SimulatedEventTaps() : state_(std::make_shared<State>()) {}

SimulatedEventTaps::~SimulatedEventTaps() = default;

std::unique_ptr<InstalledTap> SimulatedEventTaps::install(TapLocation location, std::uint64_t mask,
                                                          Callbacks callbacks) {
  if (!state_->installable[indexOf(location)]) return nullptr;
  auto tap = std::make_shared<Tap>();
  tap->mask = mask;
  tap->callbacks = std::move(callbacks);
  auto& level = state_->taps[indexOf(location)];
  level.insert(level.begin(), tap);
  return std::make_unique<Handle>(state_, std::move(tap));
}

void SimulatedEventTaps::setInstallable(TapLocation location, bool can) {
  state_->installable[indexOf(location)] = can;
}

std::optional<SystemMouseEvent> SimulatedEventTaps::send(SystemMouseEvent event,
                                                         EventOrigin origin) {
  for (const TapLocation location : {TapLocation::hid, TapLocation::session}) {
    if (location == TapLocation::hid && origin != EventOrigin::hid) continue;
    // A copy, which also keeps taps alive that are removed by their own callback.
    const State::Taps level = state_->taps[indexOf(location)];
    for (const auto& tap : level) {
      if (!tap->listens() || !watches(tap->mask, event.type)) continue;
      EventInTap view(event);
      if (tap->callbacks.event(view) == TapAnswer::drop) return std::nullopt;
    }
  }
  return event;
}

void SimulatedEventTaps::disable(TapLocation location, TapDisabled reason, bool revives) {
  const State::Taps level = state_->taps[indexOf(location)];
  for (const auto& tap : level) {
    if (!tap->listens()) continue;
    tap->enabled = false;
    tap->revives = revives;
    tap->callbacks.disabled(reason);
  }
}

std::size_t SimulatedEventTaps::installed(TapLocation location) const {
  return state_->taps[indexOf(location)].size();
}

}  // namespace velotap
