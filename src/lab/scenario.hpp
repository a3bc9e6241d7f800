// What a scenario says: statements that set the stage, and statements that happen at a time.
//
// Plain values in terms of the simulated desktop; nothing here acts. `docs/scenarios.md` describes
// the text form.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "adapters/simulated/simulated_clock.hpp"
#include "adapters/simulated/simulated_event_taps.hpp"
#include "adapters/simulated/simulated_keyboard_layout.hpp"
#include "adapters/simulated/simulated_multitouch.hpp"
#include "base/app_id.hpp"
#include "base/point.hpp"
#include "base/value.hpp"
#include "platform/multitouch_abi.hpp"
#include "platform/workspace.hpp"

namespace velotap::lab {

// The stage only.

struct AddDevice {
  SimulatedMultitouch::DeviceDescription device;
};
struct LoseLibrary {
  std::string symbol;  ///< the one that is missing; empty: the whole library is
};
struct LimitTaps {
  bool hid = true;  ///< can be made
  bool session = true;
};

// The stage, or at a time.

struct WriteSetting {
  std::string key;
  std::optional<Value> value;  ///< nothing: the key is removed
};
struct BringToFront {
  std::optional<RunningApplication> application;
};
struct AnswerLive {
  AppId application;
};
struct PlacePointer {
  std::optional<Point> location;
};
struct ShowPractice {
  std::optional<Rect> rectangle;
};
struct GiveTrust {
  bool trusted = true;
};
struct WriteSystemPreference {
  std::string domain;
  std::string key;
  Value value = false;
};
struct SelectLayout {
  std::optional<SimulatedKeyboardLayout::Keys> keys;
};

// At a time only.

struct SendFrame {
  std::string device;
  std::vector<MTTouch> touches;
  bool null = false;  ///< the library hands over a null pointer
};
struct SendMouse {
  SystemMouseEvent event;
  EventOrigin origin = EventOrigin::hid;
};
struct DisableTap {
  TapLocation location = TapLocation::session;
  TapDisabled reason = TapDisabled::byTimeout;
  bool revives = true;
};
struct ConnectDevice {
  std::string device;
  bool attached = true;
};
enum class SystemMoment { sleep, wake, display };
struct TellMoment {
  SystemMoment moment = SystemMoment::sleep;
};
enum class ControllerStep { stop, start };
struct Control {
  ControllerStep step = ControllerStep::stop;
};
struct Wait {};

using Action =
    std::variant<AddDevice, LoseLibrary, LimitTaps, WriteSetting, BringToFront, AnswerLive,
                 PlacePointer, ShowPractice, GiveTrust, WriteSystemPreference, SelectLayout,
                 SendFrame, SendMouse, DisableTap, ConnectDevice, TellMoment, Control, Wait>;

struct TimedAction {
  VirtualTime at{0};
  Action action;
};

struct Scenario {
  std::vector<Action> stage;
  std::vector<TimedAction> timed;  ///< in file order; times never decrease
};

}  // namespace velotap::lab
