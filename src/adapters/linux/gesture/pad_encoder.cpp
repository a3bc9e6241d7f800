#include "adapters/linux/gesture/pad_encoder.hpp"

#include <cmath>

namespace velotap {
namespace {

int units(double millimetres) {
  return static_cast<int>(std::lround(millimetres * kUnitsPerMillimetre));
}

int contactCount(const PadFrame& frame) {
  return (frame.contacts[0] ? 1 : 0) + (frame.contacts[1] ? 1 : 0);
}

}  // namespace

std::span<const input_event> PadEncoder::encode(const PadFrame& frame) noexcept {
  events_.clear();
  for (std::size_t slot = 0; slot < frame.contacts.size(); ++slot) addContact(slot, frame);
  if (!events_.empty()) {
    addSummary(frame);
    add(EV_SYN, SYN_REPORT, 0);
  }
  last_ = frame;
  return {events_.begin(), events_.size()};
}

void PadEncoder::add(std::uint16_t type, std::uint16_t code, int value) noexcept {
  input_event event{};
  event.type = type;
  event.code = code;
  event.value = value;
  events_.push(event);
}

void PadEncoder::addContact(std::size_t slot, const PadFrame& frame) noexcept {
  const auto& before = last_.contacts[slot];
  const auto& now = frame.contacts[slot];
  if (before == now) return;
  add(EV_ABS, ABS_MT_SLOT, static_cast<int>(slot));
  if (!now) {
    add(EV_ABS, ABS_MT_TRACKING_ID, -1);
    return;
  }
  if (!before) {
    add(EV_ABS, ABS_MT_TRACKING_ID, nextTrackingId_);
    nextTrackingId_ = nextTrackingId_ == kLastTrackingId ? 0 : nextTrackingId_ + 1;
  }
  add(EV_ABS, ABS_MT_POSITION_X, units(now->x));
  add(EV_ABS, ABS_MT_POSITION_Y, units(now->y));
}

void PadEncoder::addSummary(const PadFrame& frame) noexcept {
  const int before = contactCount(last_);
  const int now = contactCount(frame);
  if (before != now) {
    // The tools go off before they come on: a touchpad never has two fingers and one at once.
    if (before == 1) add(EV_KEY, BTN_TOOL_FINGER, 0);
    if (before == 2) add(EV_KEY, BTN_TOOL_DOUBLETAP, 0);
    if (now == 1) add(EV_KEY, BTN_TOOL_FINGER, 1);
    if (now == 2) add(EV_KEY, BTN_TOOL_DOUBLETAP, 1);
    if ((before == 0) != (now == 0)) add(EV_KEY, BTN_TOUCH, now == 0 ? 0 : 1);
  }
  const auto& first = frame.contacts[0] ? frame.contacts[0] : frame.contacts[1];
  if (first) {
    add(EV_ABS, ABS_X, units(first->x));
    add(EV_ABS, ABS_Y, units(first->y));
  }
}

}  // namespace velotap
