#include "adapters/linux/clicks/mirror_stream.hpp"

#include <algorithm>
#include <limits>

#include "adapters/linux/clicks/button_router.hpp"

namespace velotap {
namespace {

constexpr std::size_t kUsualFrame = 256;

bool isWheel(const input_event& event) {
  return event.type == EV_REL &&
         (event.code == REL_WHEEL || event.code == REL_HWHEEL || event.code == REL_WHEEL_HI_RES ||
          event.code == REL_HWHEEL_HI_RES);
}

bool aboutContacts(const input_event& event) {
  return event.type == EV_ABS || (event.type == EV_SYN && event.code == SYN_DROPPED);
}

bool endsFrame(const input_event& event) {
  return event.type == EV_SYN && event.code == SYN_REPORT;
}

double seconds(const input_event& event) {
  return static_cast<double>(event.input_event_sec) +
         static_cast<double>(event.input_event_usec) * 1e-6;
}

int reportsIn(std::span<const input_event> events) {
  return static_cast<int>(std::count_if(events.begin(), events.end(), endsFrame));
}

}  // namespace

bool isTouchMouse(const EvdevDevice& device) noexcept {
  return !device.keys[BTN_TOOL_FINGER] && device.relativeAxes[REL_X];
}

MirrorStream::MirrorStream(const EvdevDevice& device) : mouse_(isTouchMouse(device)) {
  const double palm = surfaceModel(device).palmMajor;
  palmMajor_ = palm > 0 ? static_cast<std::int32_t>(palm) : std::numeric_limits<int>::max();
  frame_.reserve(kUsualFrame);
  buttons_.reserve(kUsualFrame);
}

void MirrorStream::handle(std::span<const input_event> events, MirrorSink& sink) {
  const bool merging = reportsIn(events) > kMostAtOnce;
  // A frame in two pieces is told whole, or its end would be missing.
  toldOfContacts_ = frameOpen_ || std::any_of(events.begin(), events.end(), aboutContacts);
  if (!events.empty()) frameOpen_ = !endsFrame(events.back());
  for (const input_event& event : events) {
    if (event.type != EV_SYN) {
      if (!dropping_) take(event);
      continue;
    }
    if (event.code == SYN_DROPPED) {
      dropping_ = true;
      frame_.clear();
      buttons_.clear();
    } else if (event.code == SYN_REPORT && dropping_) {
      dropping_ = false;
      flushMerged(sink);
      sink.lost();
      // What was asked for is newer than the rest of these events, and says all that they say but
      // how far the pointer went.
      return;
    } else if (event.code == SYN_REPORT) {
      finishFrame(event, merging, sink);
    }
  }
  flushMerged(sink);
}

void MirrorStream::take(const input_event& event) {
  if (event.type == EV_ABS) follow(event);
  if (event.type == EV_KEY && isClickButton(event.code)) {
    buttons_.push_back(event);
    return;
  }
  if (mouse_ && (event.type == EV_ABS || event.type == EV_MSC)) return;
  turnsWheel_ = turnsWheel_ || isWheel(event);
  frame_.push_back(event);
}

void MirrorStream::follow(const input_event& event) {
  if (event.code == ABS_MT_SLOT) currentSlot_ = event.value;
  if (currentSlot_ < 0 || static_cast<std::size_t>(currentSlot_) >= kMostSlots) return;
  Slot& slot = slots_[static_cast<std::size_t>(currentSlot_)];
  if (event.code == ABS_MT_TRACKING_ID) slot.down = event.value >= 0;
  if (event.code == ABS_MT_TOUCH_MAJOR) slot.major = event.value;
}

void MirrorStream::finishFrame(const input_event& report, bool merging, MirrorSink& sink) {
  const bool wheelPasses = !mouse_ || gate_.passes(fingers(), seconds(report));
  if (turnsWheel_ && !wheelPasses) dropWheel();
  turnsWheel_ = false;
  if (merging && buttons_.empty() && FrameMerger::mergeable(frame_)) {
    merger_.add(frame_, frameSlot_);
    frame_.clear();
  } else {
    const int slotNow = currentSlot_;
    currentSlot_ = frameSlot_;
    flushMerged(sink);
    currentSlot_ = slotNow;
    forward(frame_, sink);
    for (const input_event& change : buttons_) {
      if (change.value != 2) sink.button(change.code, change.value != 0);  // 2: autorepeat
    }
    buttons_.clear();
  }
  frameSlot_ = currentSlot_;
}

void MirrorStream::flushMerged(MirrorSink& sink) {
  if (merger_.empty()) return;
  std::vector<input_event> merged = merger_.take(currentSlot_);
  forward(merged, sink);
}

void MirrorStream::forward(std::vector<input_event>& frame, MirrorSink& sink) {
  if (frame.empty()) return;
  input_event report{};
  report.type = EV_SYN;
  report.code = SYN_REPORT;
  frame.push_back(report);
  sink.forward(frame);
  frame.clear();
}

void MirrorStream::dropWheel() {
  std::erase_if(frame_, isWheel);
}

int MirrorStream::fingers() const noexcept {
  return static_cast<int>(std::count_if(slots_.begin(), slots_.end(), [this](const Slot& slot) {
    return slot.down && slot.major < palmMajor_;
  }));
}

void MirrorStream::setContacts(std::span<const RawContact> slots, int currentSlot) {
  slots_.fill(Slot());
  for (std::size_t i = 0; i < std::min(slots.size(), kMostSlots); ++i) {
    slots_[i] = {.down = slots[i].down(), .major = slots[i].major};
  }
  currentSlot_ = currentSlot;
  frameSlot_ = currentSlot;
}

}  // namespace velotap
