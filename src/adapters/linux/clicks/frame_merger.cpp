#include "adapters/linux/clicks/frame_merger.hpp"

#include <algorithm>
#include <cstdint>

namespace velotap {
namespace {

bool isContactAxis(std::uint16_t code) {
  return code > ABS_MT_SLOT && code <= ABS_MT_TOOL_Y;
}

}  // namespace

bool FrameMerger::mergeable(std::span<const input_event> frame) noexcept {
  return std::none_of(frame.begin(), frame.end(), [](const input_event& event) {
    return event.type == EV_KEY || (event.type == EV_ABS && event.code == ABS_MT_TRACKING_ID);
  });
}

void FrameMerger::add(std::span<const input_event> frame, int slot) {
  for (const input_event& event : frame) {
    if (event.type == EV_ABS && event.code == ABS_MT_SLOT) {
      slot = event.value;
      continue;
    }
    const bool ofContact = event.type == EV_ABS && isContactAxis(event.code);
    const int owner = ofContact ? slot : kNoSlot;
    const auto known = std::find_if(values_.begin(), values_.end(), [&](const Value& value) {
      return value.slot == owner && value.event.type == event.type &&
             value.event.code == event.code;
    });
    if (known == values_.end()) {
      values_.push_back({.slot = owner, .event = event});
    } else if (event.type == EV_REL) {
      known->event.value += event.value;
    } else {
      known->event.value = event.value;
    }
  }
}

std::vector<input_event> FrameMerger::take(int slot) {
  std::stable_sort(values_.begin(), values_.end(),
                   [](const Value& a, const Value& b) { return a.slot < b.slot; });
  std::vector<input_event> frame;
  int current = kNoSlot;
  const auto choose = [&](int chosen) {
    input_event event{};
    event.type = EV_ABS;
    event.code = ABS_MT_SLOT;
    event.value = chosen;
    frame.push_back(event);
    current = chosen;
  };
  for (const Value& value : values_) {
    if (value.slot != kNoSlot && value.slot != current) choose(value.slot);
    frame.push_back(value.event);
  }
  if (current != kNoSlot && current != slot) choose(slot);
  values_.clear();
  return frame;
}

}  // namespace velotap
