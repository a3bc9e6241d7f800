// A device whose kernel is the test: events are queued, and what reaches its mirror is kept.
//
// Any thread. Without `block` a wait that nothing ends lets the clock run to its end instead.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/clicks/mirror_hardware.hpp"
#include "support/exact_clock.hpp"

namespace velotap::test {

/// What a test sees and moves of a fake device; outlives the hardware.
struct FakeKernel {
  explicit FakeKernel(ExactClock& c) : clock(c) {}

  ExactClock& clock;
  std::mutex lock;
  std::condition_variable moved;
  bool block = false;
  bool asked = false;
  bool present = true;
  bool opened = false;
  bool grabbed = false;
  bool mirrored = false;
  bool guarded = false;
  bool mirrorKnown = true;
  bool mirrorBroken = false;
  int grabError = 0;
  int mirrorError = 0;
  int guardError = 0;
  bool guardLost = false;
  int opens = 0;
  int grabs = 0;
  bool grabbedUnguarded = false;
  int mirrors = 0;
  std::deque<input_event> events;
  std::set<std::uint16_t> buttons;  // down on the device
  std::set<std::uint16_t> mirrorDown;
  std::vector<RawContact> slots;
  std::string written;  // "+272", "-272", "m" for a frame of anything else
  std::size_t fed = 0;
  std::function<void()> onGrab;

  void send(const std::vector<input_event>& more) {
    const std::lock_guard guard(lock);
    for (const input_event& e : more) {
      if (e.type == EV_KEY && e.value != 0) buttons.insert(e.code);
      if (e.type == EV_KEY && e.value == 0) buttons.erase(e.code);
      events.push_back(e);
    }
    moved.notify_all();
  }
  void loseGuard() {
    const std::lock_guard guard(lock);
    guardLost = guarded;
    moved.notify_all();
  }
  void unplug() {
    const std::lock_guard guard(lock);
    present = false;
    moved.notify_all();
  }
  /// What was written since the last call.
  std::string take() {
    const std::lock_guard guard(lock);
    return std::exchange(written, {});
  }
};

class FakeHardware final : public MirrorHardware {
 public:
  FakeHardware(std::shared_ptr<FakeKernel> kernel, std::string path, EvdevDevice description)
      : k_(std::move(kernel)), path_(std::move(path)), description_(std::move(description)) {}

  [[nodiscard]] const std::string& path() const override { return path_; }
  [[nodiscard]] const EvdevDevice& description() const override { return description_; }
  void ask() override {
    const std::lock_guard guard(k_->lock);
    k_->asked = true;
    k_->moved.notify_all();
  }
  void waitToBeAsked(std::optional<double> seconds) override {
    static_cast<void>(pause(seconds, false));
  }
  [[nodiscard]] int open() override {
    const std::lock_guard guard(k_->lock);
    k_->opened = k_->present;
    ++k_->opens;
    return k_->present ? 0 : ENODEV;
  }
  void close() override {
    const std::lock_guard guard(k_->lock);
    k_->opened = false;
    k_->grabbed = false;
  }
  [[nodiscard]] Wake wait(std::optional<double> seconds) override { return pause(seconds, true); }
  [[nodiscard]] std::size_t read(std::span<input_event> into) override {
    const std::lock_guard guard(k_->lock);
    std::size_t n = 0;
    for (; n < into.size() && !k_->events.empty(); ++n) {
      into[n] = k_->events.front();
      k_->events.pop_front();
    }
    return n;
  }
  [[nodiscard]] NodeState state() override {
    const std::lock_guard guard(k_->lock);
    NodeState state;
    state.buttons.assign(k_->buttons.begin(), k_->buttons.end());
    state.slots = k_->slots;
    return state;
  }
  [[nodiscard]] int obstacle() override {
    const std::lock_guard guard(k_->lock);
    return k_->grabError;
  }
  [[nodiscard]] int grab() override {
    if (k_->onGrab) k_->onGrab();
    const std::lock_guard guard(k_->lock);
    if (k_->grabError != 0) return k_->grabError;
    k_->grabbed = true;
    k_->grabbedUnguarded = k_->grabbedUnguarded || !k_->guarded;
    ++k_->grabs;
    return 0;
  }
  void ungrab() override {
    const std::lock_guard guard(k_->lock);
    k_->grabbed = false;
  }
  [[nodiscard]] int makeMirror() override {
    const std::lock_guard guard(k_->lock);
    if (k_->mirrorError != 0) return k_->mirrorError;
    k_->mirrored = true;
    ++k_->mirrors;
    return 0;
  }
  [[nodiscard]] Wake waitForMirror(double seconds) override {
    {
      const std::lock_guard guard(k_->lock);
      if (!k_->present) return Wake::gone;
      if (k_->mirrorKnown && !std::exchange(announced_, true)) return Wake::events;
    }
    return pause(seconds, false);
  }
  bool write(std::span<const input_event> frames) override {
    const std::lock_guard guard(k_->lock);
    if (!k_->mirrored || k_->mirrorBroken) return false;
    if (frames.size() == 2 && frames[0].type == EV_KEY) {
      const auto code = frames[0].code;
      const bool down = frames[0].value != 0;
      k_->written += (down ? "+" : "-") + std::to_string(code);
      if (down) {
        k_->mirrorDown.insert(code);
      } else {
        k_->mirrorDown.erase(code);
      }
    } else {
      k_->written += "m";
    }
    return true;
  }
  void removeMirror() override {
    const std::lock_guard guard(k_->lock);
    k_->mirrored = false;
    k_->mirrorDown.clear();
    announced_ = false;
  }
  bool copyState() override {
    const std::lock_guard guard(k_->lock);
    return k_->mirrored && !k_->mirrorBroken;
  }
  [[nodiscard]] int guard() override {
    const std::lock_guard hold(k_->lock);
    k_->guarded = k_->guardError == 0;
    return k_->guardError;
  }
  void unguard() override {
    const std::lock_guard hold(k_->lock);
    k_->guarded = false;
    k_->guardLost = false;
  }
  void served() noexcept override {}
  void feed(std::span<const input_event> events) override {
    const std::lock_guard guard(k_->lock);
    k_->fed += events.size();
  }

 private:
  [[nodiscard]] Wake pause(std::optional<double> seconds, bool listens) {
    std::unique_lock guard(k_->lock);
    const auto over = [&] {
      return k_->asked || (listens && (!k_->events.empty() || !k_->present || k_->guardLost));
    };
    if (k_->block && !seconds) k_->moved.wait(guard, over);
    if (k_->block && seconds) {
      k_->moved.wait_for(guard, std::chrono::duration<double>(*seconds), over);
    }
    if (listens && !k_->present) return Wake::gone;
    if (listens && k_->guardLost) return Wake::unguarded;
    if (listens && !k_->events.empty()) return Wake::events;
    if (std::exchange(k_->asked, false)) return Wake::asked;
    if (seconds && !k_->block) k_->clock.advance(*seconds);
    return Wake::timeUp;
  }

  std::shared_ptr<FakeKernel> k_;
  std::string path_;
  EvdevDevice description_;
  bool announced_ = false;
};

}  // namespace velotap::test
