// A touch engine with everything it needs, over fakes, and hands to play on it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "config/app_tracker.hpp"
#include "config/config.hpp"
#include "config/defaults_store.hpp"
#include "config/practice_target.hpp"
#include "gestures/pinch_engine.hpp"
#include "gestures/tap_activity_log.hpp"
#include "gestures/touch_engine.hpp"
#include "input/multitouch_binding.hpp"
#include "output/shortcut_key_codes.hpp"
#include "support/desktop.hpp"
#include "support/exact_clock.hpp"
#include "support/touches.hpp"

namespace velotap::test {

inline constexpr const char* kOwnApp = "app.norwend.velotap";
inline constexpr const char* kEditor = "com.example.editor";
inline constexpr const char* kBrowser = "com.example.browser";

using Outcome = TapActivity::Outcome;
using Button = ClickPolicy::Button;

inline const Lines kMiddleClick = {"mouse down 2 at (512.0, 384.5)",
                                   "mouse up 2 at (512.0, 384.5)"};

inline constexpr const char* pad = "pad";
inline constexpr const char* mouse = "mouse";

/// Everything up to the engine, with the editor in front and nothing started.
struct EngineKit : Desktop {
  ExactClock time;
  DefaultsStore defaults{preferences, log};
  Config config{defaults, notifications};
  MT binding{multitouch};
  PracticeTarget practice;
  AppTracker apps{config, workspace, events, practice, notifications};
  ShortcutKeyCodes keyCodes{keyboardLayout, log};
  PinchEngine pinch{config, apps, keyCodes, events, log};
  TapActivityLog activity{mainQueue, notifications};
  TouchEngine engine{services()};

  EngineKit() {
    activate(kEditor, "Editor");
    apps.start();
  }
  TouchEngine::Services services() { return services(binding, apps); }
  TouchEngine::Services services(MT& library, AppTracker& tracker) {
    return {.multitouch = library,
            .config = config,
            .apps = tracker,
            .pinch = pinch,
            .activity = activity,
            .keyCodes = keyCodes,
            .systemPreferences = systemPreferences,
            .events = events,
            .clock = time,
            .log = log};
  }
  void set(const char* key, Value value) { defaults.set(key, std::move(value)); }
  void addDevices() {
    multitouch.add({.name = pad, .family = 128});
    multitouch.add({.name = mouse, .family = 112});
  }
};

/// A kit with a trackpad and a mouse that were started and are ready.
class EngineTest : public ::testing::Test, protected EngineKit {
 protected:
  EngineTest() {
    addDevices();
    start();
    lift(pad);
    lift(mouse);
  }
  ~EngineTest() override { EXPECT_EQ(multitouch.faults(), Lines{}); }
  void start() {
    EXPECT_TRUE(engine.start());
    multitouch.takeCalls();
    said.take();
  }
  bool deliver(const char* device, const Frame& contacts) {
    return multitouch.deliver(device, contacts.data(), static_cast<std::int32_t>(contacts.size()));
  }

  void frame(const char* device, const Frame& contacts) { EXPECT_TRUE(deliver(device, contacts)); }
  void lift(const char* device) { frame(device, {}); }
  /// `n` fingers down, moved by (dx, dy) half-way through, and up after `seconds`.
  void tap(const char* device, int n, double seconds = 0.125, float dx = 0, float dy = 0) {
    const double end = time.uptime() + seconds;
    frame(device, row(n));
    time.advance(seconds / 2);
    frame(device, row(n, dx, dy));
    time.set(end);
    lift(device);
  }
  /// What the log got since the last call, oldest first: "click", "moved" …
  Lines outcomes() {
    Lines result;
    for (const TapActivity& item : activity.items()) {
      result.insert(result.begin(), name(item.outcome));
    }
    activity.clear();
    return result;
  }
  static const char* name(Outcome outcome) {
    switch (outcome) {
      case Outcome::click:
        return "click";
      case Outcome::tooLong:
        return "tooLong";
      case Outcome::moved:
        return "moved";
      case Outcome::tooSoon:
        return "tooSoon";
    }
    return "";
  }
};

}  // namespace velotap::test
