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
#include "support/ports.hpp"
#include "support/touches.hpp"

namespace velotap::test {

inline constexpr const char* kOwnApp = "app.norwend.velotap";
inline constexpr const char* kEditor = "com.example.editor";
inline constexpr const char* kBrowser = "com.example.browser";

using Lines = std::vector<std::string>;
using Device = FakeMultitouch::Device;
using Outcome = TapActivity::Outcome;
using Button = ClickPolicy::Button;

inline const Lines kMiddleClick = {"mouse down 2 at (512.0, 384.5)",
                                   "mouse up 2 at (512.0, 384.5)"};

/// Everything up to the engine, with the editor in front and nothing started.
struct EngineKit : Ports {
  DefaultsStore defaults{preferences, log};
  Config config{defaults, notifications};
  MT multitouch{library};
  PracticeTarget practice;
  AppTracker apps{config, workspace, events, practice, notifications};
  ShortcutKeyCodes keyCodes{layout, log};
  PinchEngine pinch{config, apps, keyCodes, events, log};
  TapActivityLog activity{queue, notifications};
  TouchEngine engine{{.multitouch = multitouch,
                      .config = config,
                      .apps = apps,
                      .pinch = pinch,
                      .activity = activity,
                      .keyCodes = keyCodes,
                      .systemPreferences = system,
                      .events = events,
                      .clock = clock,
                      .log = log}};

  EngineKit() {
    clock.set(0);  // differences of small numbers of seconds are exact where a limit needs it
    workspace.setFront(RunningApplication{AppId::intern(kEditor), "Editor"});
    apps.start();
  }
  void set(const char* key, Value value) { defaults.set(key, std::move(value)); }
};

/// A kit with a trackpad and a mouse that were started and are ready.
class EngineTest : public ::testing::Test, protected EngineKit {
 protected:
  EngineTest() {
    start();
    frame(pad, {});
    frame(mouse, {});
  }
  void start() {
    EXPECT_TRUE(engine.start());
    library.takeCalls();
    log.take();
  }

  void frame(Device& device, const Frame& contacts) {
    EXPECT_TRUE(library.deliver(device, contacts));
  }
  void lift(Device& device) { frame(device, {}); }
  /// `n` fingers down, moved by (dx, dy) half-way through, and up after `seconds`.
  void tap(Device& device, int n, double seconds = 0.125, float dx = 0, float dy = 0) {
    const double end = clock.uptime() + seconds;
    frame(device, row(n));
    clock.advance(seconds / 2);
    frame(device, row(n, dx, dy));
    clock.set(end);
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

  Device& pad = library.add("pad", 128);
  Device& mouse = library.add("mouse", 112);
};

}  // namespace velotap::test
