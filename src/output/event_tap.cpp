#include "output/event_tap.hpp"

#include "output/middle_click.hpp"

namespace velotap {
namespace {

// Zero for a code that no mask can name.
constexpr std::uint64_t bit(MouseEventType type) {
  const auto code = static_cast<unsigned>(type);
  return code < 64 ? std::uint64_t{1} << code : 0;
}

constexpr std::uint64_t kButtonMask = bit(MouseEventType::leftDown) | bit(MouseEventType::leftUp) |
                                      bit(MouseEventType::rightDown) | bit(MouseEventType::rightUp);
constexpr std::uint64_t kDragMask =
    bit(MouseEventType::leftDragged) | bit(MouseEventType::rightDragged);
static_assert(kButtonMask == 0x1E && (kButtonMask | kDragMask) == 0xDE);

// A press and its release are this close together when both are synthetic.
constexpr double kSuppressedReleaseWindow = 1.0;

constexpr const char* kSource = "Velotap/EventTap";

TapAnswer convert(TappedEvent& event, MouseEventType type) {
  // The type decides how the system reads the other fields, so it goes first.
  event.setType(type);
  event.setButton(kMiddleButton);
  return TapAnswer::pass;
}

}  // namespace

EventTap::EventTap(EventTaps& taps, ClickPolicy& policy, EventStream& events, const Clock& clock,
                   MainQueue& queue, DiagnosticLog& log)
    : taps_(taps), policy_(policy), events_(events), clock_(clock), queue_(queue), log_(log) {}

bool EventTap::start() {
  stop();
  physicalTap_ = taps_.install(TapLocation::hid, kButtonMask,
                               {.event =
                                    [this](TappedEvent& event) {
                                      physicalEvent(event);
                                      return TapAnswer::pass;
                                    },
                                .disabled = [this](TapDisabled) { physicalTapDisabled(); }});
  if (!physicalTap_) {
    note("physical HID event observer unavailable — synthetic-click suppression disabled");
  }
  sessionTap_ = taps_.install(TapLocation::session, kButtonMask | kDragMask,
                              {.event = [this](TappedEvent& event) { return sessionEvent(event); },
                               .disabled = [this](TapDisabled) { sessionTapDisabled(); }});
  if (!sessionTap_) {
    note("event tap creation FAILED — check Accessibility permission");
    stop();
    return false;
  }
  if (physicalTap_) physicalTap_->enable(true);
  sessionTap_->enable(true);
  note("event tap active");
  return true;
}

void EventTap::stop() {
  if (physicalTap_) physicalTap_->enable(false);
  if (sessionTap_) sessionTap_->enable(false);
  if (physicalTap_) physicalTap_->detach();
  if (sessionTap_) sessionTap_->detach();
  physicalTap_.reset();
  sessionTap_.reset();
  physicalEvents_.reset();
  suppressedLeftClick_.reset();
}

void EventTap::disablePhysicalObservation() {
  if (physicalTap_) physicalTap_->enable(false);
  physicalTap_.reset();
  physicalEvents_.reset();
  suppressedLeftClick_.reset();
  note("physical HID event observer stopped — synthetic-click suppression disabled");
}

bool EventTap::wasObservedAtHID(std::int64_t eventNumber) {
  return physicalEvents_.contains(eventNumber, clock_.uptime());
}

void EventTap::physicalEvent(TappedEvent& event) {
  assertMainThread(queue_, kSource);
  const MouseEventType type = event.type();
  // An adapter may hand over more than the mask asks for; only buttons say that a press was real.
  if ((bit(type) & kButtonMask) == 0) return;
  physicalEvents_.record(event.number(), clock_.uptime());
  if (type == MouseEventType::leftDown || type == MouseEventType::rightDown) {
    policy_.notePhysicalButtonDown();
  }
}

void EventTap::physicalTapDisabled() {
  assertMainThread(queue_, kSource);
  if (physicalTap_) {
    physicalEvents_.reset();
    physicalTap_->enable(true);
    if (physicalTap_->enabled()) return;
  }
  disablePhysicalObservation();
}

void EventTap::sessionTapDisabled() {
  assertMainThread(queue_, kSource);
  suppressedLeftClick_.reset();
  if (policy_.abandonConversion()) postMiddleRelease(events_, log_);
  if (sessionTap_) {
    sessionTap_->enable(true);
    if (sessionTap_->enabled()) return;
  }
  if (lost_) lost_();
}

TapAnswer EventTap::sessionEvent(TappedEvent& event) {
  assertMainThread(queue_, kSource);
  switch (event.type()) {
    case MouseEventType::leftDown:
      return leftDown(event);
    case MouseEventType::leftUp:
      return leftUp(event);
    case MouseEventType::rightDown:
      return rightDown(event);
    case MouseEventType::rightUp:
      return release(event, ClickPolicy::Button::right);
    case MouseEventType::leftDragged:
      return drag(event, ClickPolicy::Button::left);
    case MouseEventType::rightDragged:
      return drag(event, ClickPolicy::Button::right);
    case MouseEventType::otherDown:
    case MouseEventType::otherUp:
    case MouseEventType::otherDragged:
      return TapAnswer::pass;
  }
  return TapAnswer::pass;
}

TapAnswer EventTap::leftDown(TappedEvent& event) {
  const bool canIdentify = physicalTap_ != nullptr;
  const bool physicalKnown = canIdentify && wasObservedAtHID(event.number());
  const bool treatAsPhysical = !canIdentify || physicalKnown;
  note(physicalKnown ? "left mouse down: HID=true" : "left mouse down: HID=false");
  if (treatAsPhysical) policy_.notePhysicalButtonDown();
  if (policy_.shouldSwallowSyntheticLeftClick(canIdentify, physicalKnown)) {
    suppressedLeftClick_ = {.eventNumber = event.number(),
                            .expiresAt = clock_.uptime() + kSuppressedReleaseWindow};
    note("swallowed synthetic left click after trackpad tap");
    return TapAnswer::drop;
  }
  if (!treatAsPhysical) return TapAnswer::pass;
  if (!policy_.shouldConvertClick(ClickPolicy::Button::left)) return TapAnswer::pass;
  note("converted left click to middle click");
  return convert(event, MouseEventType::otherDown);
}

TapAnswer EventTap::leftUp(TappedEvent& event) {
  if (swallowsRelease(event.number())) return TapAnswer::drop;
  return release(event, ClickPolicy::Button::left);
}

bool EventTap::swallowsRelease(std::int64_t number) {
  if (!suppressedLeftClick_) return false;
  const bool expired = suppressedLeftClick_->expiresAt < clock_.uptime();
  if (!expired && suppressedLeftClick_->eventNumber != number) return false;
  suppressedLeftClick_.reset();
  return !expired;
}

TapAnswer EventTap::rightDown(TappedEvent& event) {
  // A synthetic right press passes before anything else is considered: the echo of a tap is always
  // a left click.
  const bool canIdentify = physicalTap_ != nullptr;
  const bool physicalKnown = canIdentify && wasObservedAtHID(event.number());
  note(physicalKnown ? "right mouse down: HID=true" : "right mouse down: HID=false");
  if (canIdentify && !physicalKnown) return TapAnswer::pass;
  policy_.notePhysicalButtonDown();
  if (!policy_.shouldConvertClick(ClickPolicy::Button::right)) return TapAnswer::pass;
  note("converted right click to middle click");
  return convert(event, MouseEventType::otherDown);
}

TapAnswer EventTap::release(TappedEvent& event, ClickPolicy::Button button) {
  return policy_.endConversion(button) ? convert(event, MouseEventType::otherUp) : TapAnswer::pass;
}

TapAnswer EventTap::drag(TappedEvent& event, ClickPolicy::Button button) {
  return policy_.isConverting(button) ? convert(event, MouseEventType::otherDragged)
                                      : TapAnswer::pass;
}

void EventTap::note(const char* text) const {
  if (log_.enabled()) log_.line(text);
}

}  // namespace velotap
