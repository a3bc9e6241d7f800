#include "adapters/linux/gesture/gesture_touchpad.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "fake_pad.hpp"

namespace velotap {
namespace {

using enum GestureKind;
using enum GesturePhase;

class SteadyClock final : public Clock {
 public:
  [[nodiscard]] double uptime() const noexcept override {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
  }
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override { return {}; }
};

/// A pad whose state another thread can wait for.
class WatchedPad final : public FakePad {
 public:
  int create(double now) override {
    const std::lock_guard guard(lock);
    const int error = FakePad::create(now);
    changed.notify_all();
    return error;
  }
  void waitForCreation() {
    std::unique_lock guard(lock);
    changed.wait(guard, [&] { return creations > 0; });
  }
  bool write(std::span<const input_event> frame) override {
    const std::lock_guard guard(lock);
    const bool done = FakePad::write(frame);
    contacts = contactsDown();
    changed.notify_all();
    return done;
  }
  void waitForContacts(int count) {
    std::unique_lock guard(lock);
    changed.wait(guard, [&] { return contacts == count; });
  }

 private:
  std::mutex lock;
  std::condition_variable changed;
  int contacts = 0;
};

GestureEvent event(GesturePhase phase, double value = 0) {
  return {.kind = magnify, .phase = phase, .value = value, .location = {}};
}

TEST(GestureTouchpad, isMadeReadyWhenGesturesAreAnnounced) {
  WatchedPad pad;
  LinesKept log;
  const SteadyClock clock;
  GestureTouchpad touchpad(pad, {}, clock, log);
  touchpad.prepare();
  pad.waitForCreation();
}

TEST(GestureTouchpad, playsWhatAnotherThreadPosts) {
  WatchedPad pad;
  LinesKept log;
  const SteadyClock clock;
  GestureTouchpad touchpad(pad, {}, clock, log);
  touchpad.post(event(began));
  touchpad.post(event(changed, 0.1));
  pad.waitForContacts(2);
  touchpad.post(event(ended));
  pad.waitForContacts(0);
}

TEST(GestureTouchpad, cancelsWithOneContactFirst) {
  WatchedPad pad;
  LinesKept log;
  const SteadyClock clock;
  GestureTouchpad touchpad(pad, {}, clock, log);
  touchpad.post(event(began));
  pad.waitForContacts(2);
  touchpad.post(event(cancelled));
  pad.waitForContacts(1);
  pad.waitForContacts(0);
}

TEST(GestureTouchpad, endsWithNothingDownInTheMiddleOfAGesture) {
  WatchedPad pad;
  LinesKept log;
  const SteadyClock clock;
  {
    GestureTouchpad touchpad(pad, {}, clock, log);
    touchpad.post(event(began));
    pad.waitForContacts(2);
  }
  EXPECT_EQ(pad.contactsDown(), 0);
  EXPECT_FALSE(pad.exists);
}

TEST(GestureTouchpad, moreEventsThanItCanHoldDoNotLeaveAContactDown) {
  WatchedPad pad;
  LinesKept log;
  const SteadyClock clock;
  GestureTouchpad touchpad(pad, {}, clock, log);
  touchpad.post(event(began));
  pad.waitForContacts(2);
  for (int i = 0; i < 5000; ++i) touchpad.post(event(changed, i % 2 == 0 ? 0.01 : -0.01));
  touchpad.post(event(ended));
  pad.waitForContacts(0);
}

}  // namespace
}  // namespace velotap
