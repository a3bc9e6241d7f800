// All services of the core, made fresh over one platform and wired to each other.
//
// The application shares one instance of each service for its whole life (`X::shared()`); replays,
// benchmarks and tests make as many independent sets as they like with this. Members are listed in
// the order in which they depend on each other, which is also the order of construction.
#pragma once

#include "config/app_tracker.hpp"
#include "config/config.hpp"
#include "config/conflict_checker.hpp"
#include "config/defaults_store.hpp"
#include "config/practice_target.hpp"
#include "control/controller.hpp"
#include "control/tap_needs.hpp"
#include "gestures/pinch_engine.hpp"
#include "gestures/tap_activity_log.hpp"
#include "gestures/touch_engine.hpp"
#include "input/device_watcher.hpp"
#include "input/multitouch_binding.hpp"
#include "output/event_tap.hpp"
#include "output/shortcut_key_codes.hpp"
#include "platform/platform.hpp"

namespace velotap {

struct Services {
  explicit Services(Platform& platform);

  DefaultsStore defaults;
  Config config;
  MT multitouch;
  PracticeTarget practice;
  AppTracker apps;
  ShortcutKeyCodes keyCodes;
  PinchEngine pinch;
  TapActivityLog activity;
  TouchEngine engine;
  EventTap tap;
  TapNeedsTeller tapNeeds;
  Controller controller;
  DeviceWatcher watcher;

  /// Starts what the application starts at launch: key codes, tracker, watcher, then the listeners.
  void launch();
};

}  // namespace velotap
