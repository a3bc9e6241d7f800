// Carries out gesture events: on the virtual touchpad where the desktop takes one, else by Control
// and the wheel.
//
// The way out is chosen when a gesture begins and kept until the next one begins. The touchpad is
// created when gestures are announced, because a desktop takes up to a second to open it, or else
// for the first gesture that needs it, and kept. When it is lost in the middle, the rest of
// the gesture is not shown; the next one creates it anew. One thread; never waits: the owner calls
// `turn` when `deadline` has come or the device's descriptor is readable. Destroying it lifts and
// releases everything.
#pragma once

#include <functional>
#include <optional>
#include <span>

#include "adapters/linux/gesture/gesture_player.hpp"
#include "adapters/linux/gesture/pad_device.hpp"
#include "adapters/linux/gesture/pad_encoder.hpp"
#include "adapters/linux/gesture/wheel_zoom.hpp"
#include "platform/diagnostic_log.hpp"

namespace velotap {

/// A gesture event without its place, which a touchpad does not choose.
struct GestureNote {
  GestureKind kind = GestureKind::magnify;
  GesturePhase phase = GesturePhase::began;
  double value = 0;
};

/// What the world around the gestures decides.
struct GestureWays {
  /// Does the desktop listen to touchpads at present?
  std::function<bool()> padUsable = [] { return true; };
  /// Writes one frame to the combined pointer and keyboard; false when it cannot.
  std::function<bool(std::span<const input_event>)> writeCombined;
};

class GestureOutput {
 public:
  GestureOutput(PadDevice& pad, GestureWays ways, DiagnosticLog& log);
  ~GestureOutput();
  GestureOutput(const GestureOutput&) = delete;
  GestureOutput& operator=(const GestureOutput&) = delete;

  /// Gestures may follow.
  void prepare(double now);
  void handle(const GestureNote& note, double now);
  /// Gives up what is in progress: events were lost.
  void cancel(double now);
  /// Plays what is due.
  void turn(double now);
  [[nodiscard]] std::optional<double> deadline() const;

 private:
  enum class Way { pad, wheel };

  [[nodiscard]] Way chooseWay(double now);
  [[nodiscard]] bool createPad(double now);
  void writePad(const PadFrame& frame);
  void writeWheel(const WheelEvents& events);
  void tellOnce(bool& told, const char* line);

  PadDevice& pad_;
  GestureWays ways_;
  DiagnosticLog& log_;
  GesturePlayer player_;
  PadEncoder encoder_;
  WheelZoom wheel_;
  Way way_ = Way::pad;
  bool chosen_ = false;
  bool padReady_ = false;
  bool toldUnusable_ = false;
  bool toldNoRotation_ = false;
  int toldError_ = 0;
};

}  // namespace velotap
