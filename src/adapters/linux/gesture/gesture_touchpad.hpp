// Where gesture events are posted on Linux: a thread that plays them when their time has come.
//
// `post` is safe from any thread and neither blocks nor allocates: it leaves the event in a ring
// and wakes the thread. Frames need exact times, and the threads that post have touches to read;
// so the player has a thread of its own, which sleeps without a timer while no gesture is played.
// Destroying the object lifts every contact, releases every key and ends the thread.
#pragma once

#include <atomic>
#include <thread>

#include "adapters/linux/gesture/event_ring.hpp"
#include "adapters/linux/gesture/gesture_output.hpp"
#include "adapters/linux/gesture/pad_device.hpp"
#include "platform/clock.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/event_stream.hpp"

namespace velotap {

class GestureTouchpad {
 public:
  /// `pad` and the closures of `ways` are used on the player's thread alone. All references must
  /// outlive the object.
  GestureTouchpad(PadDevice& pad, GestureWays ways, const Clock& clock, DiagnosticLog& log);
  ~GestureTouchpad();
  GestureTouchpad(const GestureTouchpad&) = delete;
  GestureTouchpad& operator=(const GestureTouchpad&) = delete;

  void post(const GestureEvent& event) noexcept;
  /// Makes ready what the first gesture needs; like `post` in every other respect.
  void prepare() noexcept;

 private:
  void wake() noexcept;
  void run();
  void takeNotes(GestureOutput& output);
  void sleepUntilNeeded(const GestureOutput& output) const;

  PadDevice& pad_;
  GestureWays ways_;
  const Clock& clock_;
  DiagnosticLog& log_;
  EventRing<GestureNote, 256> notes_;
  std::atomic<bool> lost_ = false;  ///< the ring was full: what is in progress cannot be trusted
  std::atomic<bool> preparing_ = false;
  std::atomic<bool> stopping_ = false;
  int wakeDescriptor_ = -1;
  std::thread thread_;
};

}  // namespace velotap
