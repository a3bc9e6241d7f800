// Devices and events for the tests of the decoder.
#pragma once

#include <linux/input.h>

#include <initializer_list>
#include <vector>

#include "adapters/linux/evdev/contact_reader.hpp"
#include "adapters/linux/evdev/evdev_device.hpp"

namespace velotap::test {

/// A Magic Trackpad 2 as its driver describes it: 161 by 115 mm.
inline EvdevDevice magicTrackpad() {
  EvdevDevice device;
  device.name = "Magic Trackpad 2";
  device.bus = BUS_BLUETOOTH;
  device.vendor = 0x004C;
  device.product = 0x0265;
  device.properties.set(INPUT_PROP_POINTER);
  device.properties.set(INPUT_PROP_BUTTONPAD);
  for (const unsigned key : {BTN_LEFT, BTN_TOOL_FINGER, BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP,
                             BTN_TOOL_QUADTAP, BTN_TOOL_QUINTTAP, BTN_TOUCH}) {
    device.keys.set(key);
  }
  device.absoluteAxes[ABS_MT_SLOT] = AxisInfo{.minimum = 0, .maximum = 15};
  device.absoluteAxes[ABS_MT_TRACKING_ID] = AxisInfo{.minimum = 0, .maximum = 65535};
  device.absoluteAxes[ABS_MT_POSITION_X] =
      AxisInfo{.minimum = -3678, .maximum = 3934, .fuzz = 4, .resolution = 47};
  device.absoluteAxes[ABS_MT_POSITION_Y] =
      AxisInfo{.minimum = -2478, .maximum = 2587, .fuzz = 4, .resolution = 44};
  device.absoluteAxes[ABS_MT_TOUCH_MAJOR] = AxisInfo{.minimum = 0, .maximum = 1020};
  device.absoluteAxes[ABS_MT_TOUCH_MINOR] = AxisInfo{.minimum = 0, .maximum = 1020};
  device.absoluteAxes[ABS_MT_PRESSURE] = AxisInfo{.minimum = 0, .maximum = 253};
  return device;
}

/// A Magic Mouse 2 as its driver describes it.
inline EvdevDevice magicMouse() {
  EvdevDevice device;
  device.name = "Magic Mouse 2";
  device.bus = BUS_BLUETOOTH;
  device.vendor = 0x004C;
  device.product = 0x0269;
  for (const unsigned key : {BTN_LEFT, BTN_RIGHT, BTN_MIDDLE}) device.keys.set(key);
  for (const unsigned axis : {REL_X, REL_Y, REL_WHEEL}) device.relativeAxes.set(axis);
  device.absoluteAxes[ABS_MT_SLOT] = AxisInfo{.minimum = 0, .maximum = 15};
  device.absoluteAxes[ABS_MT_TRACKING_ID] = AxisInfo{.minimum = 0, .maximum = 65535};
  device.absoluteAxes[ABS_MT_POSITION_X] =
      AxisInfo{.minimum = -1100, .maximum = 1258, .resolution = 26};
  device.absoluteAxes[ABS_MT_POSITION_Y] =
      AxisInfo{.minimum = -1589, .maximum = 2047, .resolution = 70};
  device.absoluteAxes[ABS_MT_TOUCH_MAJOR] = AxisInfo{.minimum = 0, .maximum = 1020};
  device.absoluteAxes[ABS_MT_TOUCH_MINOR] = AxisInfo{.minimum = 0, .maximum = 1020};
  return device;
}

inline input_event event(unsigned type, unsigned code, int value, double time = 0) {
  input_event e{};
  e.input_event_sec = static_cast<long>(time);
  e.input_event_usec = static_cast<long>((time - static_cast<double>(e.input_event_sec)) * 1e6);
  e.type = static_cast<std::uint16_t>(type);
  e.code = static_cast<std::uint16_t>(code);
  e.value = value;
  return e;
}

inline input_event report(double time = 0) {
  return event(EV_SYN, SYN_REPORT, 0, time);
}

/// One contact's events in its slot.
inline std::vector<input_event> contact(int slot, int id, int x, int y, double time = 0) {
  return {event(EV_ABS, ABS_MT_SLOT, slot, time), event(EV_ABS, ABS_MT_TRACKING_ID, id, time),
          event(EV_ABS, ABS_MT_POSITION_X, x, time), event(EV_ABS, ABS_MT_POSITION_Y, y, time)};
}

inline std::vector<input_event> lift(int slot, double time = 0) {
  return {event(EV_ABS, ABS_MT_SLOT, slot, time), event(EV_ABS, ABS_MT_TRACKING_ID, -1, time)};
}

inline void append(std::vector<input_event>& events, const std::vector<input_event>& more) {
  events.insert(events.end(), more.begin(), more.end());
}

/// Feeds events; what the last one meant.
inline ContactReader::Step feed(ContactReader& reader, const std::vector<input_event>& events) {
  ContactReader::Step step = ContactReader::Step::nothing;
  for (const input_event& e : events) step = reader.handle(e);
  return step;
}

inline std::vector<std::int32_t> ids(const RawContacts& contacts) {
  std::vector<std::int32_t> ids;
  for (const RawContact& c : contacts) ids.push_back(c.id);
  return ids;
}

}  // namespace velotap::test
