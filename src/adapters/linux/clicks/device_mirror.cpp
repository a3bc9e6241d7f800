#include "adapters/linux/clicks/device_mirror.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <utility>

namespace velotap {
namespace {

constexpr std::size_t kEventsPerRead = 512;

std::array<input_event, 2> buttonFrame(std::uint16_t code, bool down) {
  std::array<input_event, 2> frame{};
  frame[0].type = EV_KEY;
  frame[0].code = code;
  frame[0].value = down ? 1 : 0;
  frame[1].type = EV_SYN;
  frame[1].code = SYN_REPORT;
  return frame;
}

}  // namespace

class DeviceMirror::Sink final : public MirrorSink {
 public:
  explicit Sink(DeviceMirror& mirror) : mirror_(mirror) {}
  void forward(std::span<const input_event> frame) override {
    if (!mirror_.hardware_->write(frame)) mirror_.mirrorLost_ = true;
  }
  void button(std::uint16_t code, bool down) override { mirror_.takeButton(code, down); }
  void lost() override { mirror_.catchUp(); }

 private:
  DeviceMirror& mirror_;
};

DeviceMirror::DeviceMirror(std::unique_ptr<MirrorHardware> hardware, Links links)
    : hardware_(std::move(hardware)),
      links_(std::move(links)),
      mouse_(isTouchMouse(hardware_->description())),
      stream_(hardware_->description()),
      router_(mouse_) {}

DeviceMirror::~DeviceMirror() {
  stop();
}

void DeviceMirror::start() {
  // Signals belong to the main thread.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  ::pthread_sigmask(SIG_BLOCK, &all, &before);
  thread_ = std::thread([this] { run(); });
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void DeviceMirror::stop() {
  stopping_ = true;
  want_ = Want::noAtOnce;
  hardware_->ask();
  if (thread_.joinable()) thread_.join();
}

void DeviceMirror::want(Want want, int wheelLimit) {
  wheelLimit_ = wheelLimit;
  want_ = want;
  if (want == Want::yes) retry_ = true;
  hardware_->ask();
}

DeviceMirror::Status DeviceMirror::status() const {
  const std::lock_guard guard(lock_);
  return status_;
}

void DeviceMirror::run() {
  while (turn()) {
  }
}

bool DeviceMirror::turn() {
  const GrabState state = status().state;
  switch (state) {
    case GrabState::resting:
    case GrabState::refused:
      if (stopping_) return false;
      stepResting(state);
      break;
    case GrabState::appearing:
    case GrabState::settling:
      stepAppearing(state);
      break;
    case GrabState::waiting:
      stepWaiting();
      break;
    case GrabState::grabbed:
    case GrabState::leaving:
      stepGrabbed(state);
      break;
    case GrabState::gone:
      return false;
  }
  return true;
}

void DeviceMirror::enter(const Status& status) {
  stateSince_ = links_.clock.uptime();
  {
    const std::lock_guard guard(lock_);
    // The same refusal once more is nothing to wake the main thread for.
    if (std::exchange(status_, status) == status) return;
  }
  links_.queue.async([weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->links_.changed(*self);
  });
}

void DeviceMirror::stepResting(GrabState state) {
  if (!wanted()) losses_ = 0;
  if (wanted() && (state == GrabState::resting || retry_)) {
    if (retry_) retries_ = 0;
    begin();
  } else if (!wanted() && state == GrabState::refused) {
    enter({.state = GrabState::resting});
  } else if (const auto left = untilRetry(); left && *left <= 0) {
    ++retries_;
    begin();
  } else {
    hardware_->waitToBeAsked(left);
  }
}

std::optional<double> DeviceMirror::untilRetry() const {
  const Status now = status();
  const bool held = now.trouble == GrabTrouble::device && now.error == EBUSY;
  if (!wanted() || !held || retries_ >= kMostRetries) return std::nullopt;
  return std::max(0.0, stateSince_ + std::ldexp(kFirstPause, retries_) - links_.clock.uptime());
}

void DeviceMirror::begin() {
  const auto refuse = [this](GrabTrouble trouble, int error) {
    hardware_->close();
    enter({.state = GrabState::refused, .trouble = trouble, .error = error});
  };
  retry_ = false;
  if (const int error = hardware_->open(); error != 0) {
    refuse(GrabTrouble::device, error);
    return;
  }
  // Asked first, lest a mirror appear on the desktop only to vanish again.
  const int obstacle = isIdle(hardware_->state()) ? hardware_->obstacle() : 0;
  if (obstacle != 0 && obstacle != ENODEV) {
    refuse(GrabTrouble::device, obstacle);
    return;
  }
  mirrorLost_ = false;
  if (const int error = hardware_->makeMirror(); error != 0) {
    refuse(GrabTrouble::mirror, error);
    return;
  }
  enter({.state = GrabState::appearing});
}

void DeviceMirror::stepAppearing(GrabState state) {
  if (!wanted()) {
    abandonMirror({.state = GrabState::resting});
    return;
  }
  const bool appearing = state == GrabState::appearing;
  const double limit = appearing ? kMirrorKnownWithin : kSettle;
  const double left = limit - (links_.clock.uptime() - stateSince_);
  const auto next = appearing ? GrabState::settling : GrabState::waiting;
  if (left <= 0) {
    enter({.state = next});
    return;
  }
  switch (hardware_->waitForMirror(left)) {
    case MirrorHardware::Wake::events:
      if (appearing) enter({.state = next});
      break;
    case MirrorHardware::Wake::timeUp:
      enter({.state = next});
      break;
    case MirrorHardware::Wake::gone:
      vanish();
      break;
    case MirrorHardware::Wake::asked:
    case MirrorHardware::Wake::unguarded:
      break;
  }
}

void DeviceMirror::stepWaiting() {
  if (!wanted()) {
    abandonMirror({.state = GrabState::resting});
    return;
  }
  discardWaiting();
  if (isIdle(hardware_->state())) {
    tryToGrab();
    if (status().state != GrabState::waiting) return;
  }
  if (hardware_->wait(std::nullopt) == MirrorHardware::Wake::gone) vanish();
}

void DeviceMirror::tryToGrab() {
  // The guard first, so that no moment of the grab is without one.
  if (const int error = hardware_->guard(); error != 0) {
    abandonMirror({.state = GrabState::refused, .trouble = GrabTrouble::guard, .error = error});
    return;
  }
  if (const int error = hardware_->grab(); error == ENODEV) {
    vanish();
    return;
  } else if (error != 0) {
    hardware_->unguard();
    abandonMirror({.state = GrabState::refused, .trouble = GrabTrouble::device, .error = error});
    return;
  }
  // What went down just before belongs to the desktop, which would never hear of its release.
  if (!isIdle(hardware_->state())) {
    hardware_->ungrab();
    hardware_->unguard();
    return;
  }
  catchUp();
  retries_ = 0;
  enter({.state = GrabState::grabbed});
}

void DeviceMirror::stepGrabbed(GrabState state) {
  if (want_ == Want::noAtOnce) {
    giveBack({.state = GrabState::resting});
    return;
  }
  if (!wanted() && nothingDown() && isIdle(hardware_->state())) {
    giveBack({.state = GrabState::resting});
    return;
  }
  if (wanted() != (state == GrabState::grabbed)) {
    enter({.state = wanted() ? GrabState::grabbed : GrabState::leaving});
  }
  stream_.setWheelLimit(wheelLimit_);
  switch (hardware_->wait(untilOverdue())) {
    case MirrorHardware::Wake::gone:
      vanish();
      return;
    case MirrorHardware::Wake::unguarded:
      lose(GrabTrouble::guard);
      return;
    case MirrorHardware::Wake::events:
      serveEvents();
      break;
    case MirrorHardware::Wake::asked:
    case MirrorHardware::Wake::timeUp:
      break;
  }
  passOverdue();
  if (mirrorLost_) lose(GrabTrouble::mirror);
}

void DeviceMirror::lose(GrabTrouble trouble) {
  if (links_.clock.uptime() - stateSince_ >= kHeldWell) losses_ = 0;
  // What is lost again and again had better stay away.
  if (++losses_ > kMostLosses) {
    giveBack({.state = GrabState::refused, .trouble = trouble, .error = EIO});
    return;
  }
  giveBack({.state = GrabState::resting});
  links_.queue.async([weak = weak_from_this(), trouble] {
    if (const auto self = weak.lock()) self->links_.lost(*self, trouble);
  });
}

void DeviceMirror::giveBack(const Status& after) {
  releaseEverything();
  hardware_->unguard();
  hardware_->ungrab();
  abandonMirror(after);
}

void DeviceMirror::abandonMirror(const Status& after) {
  hardware_->removeMirror();
  hardware_->close();
  enter(after);
}

void DeviceMirror::vanish() {
  releaseEverything();
  hardware_->unguard();
  abandonMirror({.state = GrabState::gone});
}

void DeviceMirror::discardWaiting() {
  std::array<input_event, kEventsPerRead> events;
  while (hardware_->read(events) == events.size()) {
  }
}

// What lies on a touch mouse means nothing to the desktop, so only its buttons count.
bool DeviceMirror::isIdle(const NodeState& state) const {
  const bool pressed = std::any_of(state.buttons.begin(), state.buttons.end(), isClickButton);
  return !pressed && (mouse_ || !state.touched());
}

void DeviceMirror::serveEvents() {
  std::array<input_event, kEventsPerRead> events;
  const std::size_t count = hardware_->read(events);
  Sink sink(*this);
  stream_.handle({events.data(), count}, sink);
  if (stream_.toldOfContacts()) hardware_->feed({events.data(), count});
  hardware_->served();
}

void DeviceMirror::catchUp() {
  discardWaiting();
  const NodeState state = hardware_->state();
  stream_.setContacts(state.slots, state.currentSlot);
  if (!mouse_ && !hardware_->copyState()) mirrorLost_ = true;
  for (const int button : {BTN_LEFT, BTN_RIGHT, BTN_MIDDLE}) {
    const auto code = static_cast<std::uint16_t>(button);
    const auto found = std::find(state.buttons.begin(), state.buttons.end(), code);
    takeButton(code, found != state.buttons.end());
  }
}

void DeviceMirror::takeButton(std::uint16_t code, bool down) {
  const std::lock_guard guard(lock_);
  if (isDownLocked(code) == down) return;
  if (down) {
    takePressLocked(code);
  } else {
    takeReleaseLocked(code);
  }
}

bool DeviceMirror::isDownLocked(std::uint16_t code) const {
  return std::any_of(presses_.begin(), presses_.end(),
                     [code](const Pressed& press) { return press.code == code; });
}

void DeviceMirror::takePressLocked(std::uint16_t code) {
  const Pressed press{
      .code = code,
      .click = {.button = router_.meaning(code), .down = true, .number = links_.taps.nextNumber()}};
  presses_.push_back(press);
  if (!links_.taps.active() && pending_.empty()) {
    applyLocked(press, PressAnswer::unchanged);
    return;
  }
  pending_.push_back({.event = press, .deadline = links_.clock.uptime() + kAnswerWithin});
  links_.queue.async([weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->answerPending();
  });
}

// Nobody is asked about a release, so it need not wait for an answer: it follows its press.
void DeviceMirror::takeReleaseLocked(std::uint16_t code) {
  const auto press = std::find_if(presses_.begin(), presses_.end(),
                                  [code](const Pressed& p) { return p.code == code; });
  Pressed release = *press;
  release.click.down = false;
  presses_.erase(press);
  if (pending_.empty()) {
    applyLocked(release, PressAnswer::unchanged);
  } else {
    pending_.push_back({.event = release, .deadline = links_.clock.uptime() + kAnswerWithin});
  }
  tell(release.click);
}

void DeviceMirror::tell(const Click& click) {
  links_.queue.async([weak = weak_from_this(), click] {
    if (const auto self = weak.lock()) static_cast<void>(self->links_.taps.pass(click));
  });
}

void DeviceMirror::answerPending() {
  Pressed asked;
  {
    const std::lock_guard guard(lock_);
    const auto press = std::find_if(pending_.begin(), pending_.end(),
                                    [](const Pending& p) { return p.event.click.down; });
    if (press == pending_.end()) return;  // it was late, and passed without us
    asked = press->event;
  }
  const PressAnswer answer = links_.taps.pass(asked.click);
  const std::lock_guard guard(lock_);
  if (pending_.empty() || pending_.front().event.click.number != asked.click.number) return;
  applyLocked(asked, answer);
  pending_.pop_front();
  // The releases that waited for this press.
  while (!pending_.empty() && !pending_.front().event.click.down) {
    applyLocked(pending_.front().event, PressAnswer::unchanged);
    pending_.pop_front();
  }
}

std::optional<double> DeviceMirror::untilOverdue() {
  const std::lock_guard guard(lock_);
  if (pending_.empty()) return std::nullopt;
  return std::max(0.0, pending_.front().deadline - links_.clock.uptime());
}

void DeviceMirror::passOverdue() {
  const std::lock_guard guard(lock_);
  if (pending_.empty() || pending_.front().deadline > links_.clock.uptime()) return;
  // Whoever let one click wait so long is not asked about the next either.
  for (const Pending& late : pending_) applyLocked(late.event, PressAnswer::unchanged);
  pending_.clear();
  links_.taps.reportTimeout(links_.queue);
}

void DeviceMirror::applyLocked(const Pressed& event, PressAnswer answer) {
  emitLocked(event.click.down ? router_.press(event.code, answer) : router_.release(event.code));
}

void DeviceMirror::emitLocked(const Emission& emission) {
  switch (emission.outlet) {
    case Emission::Outlet::none:
      break;
    case Emission::Outlet::mirror:
      if (!hardware_->write(buttonFrame(emission.code, emission.down))) {
        mirrorLost_ = true;
        hardware_->ask();
      }
      break;
    case Emission::Outlet::pointer:
      links_.middle(emission.down);
      break;
  }
}

void DeviceMirror::releaseEverything() {
  const std::lock_guard guard(lock_);
  pending_.clear();
  for (const Emission& release : router_.releaseAll()) emitLocked(release);
  for (Pressed& press : presses_) {
    press.click.down = false;
    tell(press.click);
  }
  presses_.clear();
}

bool DeviceMirror::nothingDown() {
  const std::lock_guard guard(lock_);
  return presses_.empty() && pending_.empty();
}

}  // namespace velotap
