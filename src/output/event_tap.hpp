// Edits the system's own mouse clicks: turns a click made with resting fingers into a middle click,
// swallows the left click that the system makes of a tap that was already answered, and tells
// hardware presses from synthesised ones by watching the lowest level of the event stream.
//
// Main thread throughout. Decides nothing about fingers itself: it asks a ClickPolicy. Whatever
// happens to the taps, a middle button that a conversion holds down is released.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "output/click_policy.hpp"
#include "output/recent_physical_mouse_events.hpp"
#include "platform/clock.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/event_stream.hpp"
#include "platform/event_taps.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

/// A left press that was swallowed; its release is to be swallowed too.
struct SuppressedLeftClick {
  std::int64_t eventNumber = 0;
  double expiresAt = 0;  ///< seconds of uptime after which the record is void
};

class EventTap {
 public:
  EventTap(EventTaps& taps, ClickPolicy& policy, EventStream& events, const Clock& clock,
           MainQueue& queue, DiagnosticLog& log);

  /// Called when the session tap is gone for good: the listeners must be stopped.
  void setLostHandler(std::function<void()> lost) { lost_ = std::move(lost); }

  /// Installs both taps; true when the converting one runs. Without the observing one every press
  /// counts as physical and nothing is swallowed.
  bool start();
  /// Removes both taps and forgets what they saw.
  void stop();
  /// Gives up the observing tap alone.
  void disablePhysicalObservation();

  [[nodiscard]] bool wasObservedAtHID(std::int64_t eventNumber);

 private:
  TapAnswer sessionEvent(TappedEvent& event);
  TapAnswer leftDown(TappedEvent& event);
  TapAnswer leftUp(TappedEvent& event);
  TapAnswer rightDown(TappedEvent& event);
  TapAnswer release(TappedEvent& event, ClickPolicy::Button button);
  TapAnswer drag(TappedEvent& event, ClickPolicy::Button button);
  void physicalEvent(TappedEvent& event);
  void physicalTapDisabled();
  void sessionTapDisabled();
  [[nodiscard]] bool swallowsRelease(std::int64_t number);
  void note(const char* text) const;

  EventTaps& taps_;
  ClickPolicy& policy_;
  EventStream& events_;
  const Clock& clock_;
  MainQueue& queue_;
  DiagnosticLog& log_;
  std::function<void()> lost_;
  std::unique_ptr<InstalledTap> physicalTap_;
  std::unique_ptr<InstalledTap> sessionTap_;
  RecentPhysicalMouseEvents physicalEvents_;
  std::optional<SuppressedLeftClick> suppressedLeftClick_;
};

}  // namespace velotap
