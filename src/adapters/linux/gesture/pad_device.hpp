// The virtual touchpad as its player sees it: something that can appear, be written to and vanish.
//
// One thread.
#pragma once

#include <linux/input.h>

#include <optional>
#include <span>

namespace velotap {

class PadDevice {
 public:
  virtual ~PadDevice() = default;
  /// Makes the touchpad appear, if it is not there already. Zero, or the system's error number.
  [[nodiscard]] virtual int create(double now) = 0;
  /// Has the desktop had the time to take the touchpad up? What is written earlier gets lost.
  [[nodiscard]] virtual bool ready(double now) = 0;
  /// Readable when `ready` is worth asking again; -1 when only time tells.
  [[nodiscard]] virtual int wakeDescriptor() const = 0;
  /// When `ready` is worth asking again; nothing when time does not matter.
  [[nodiscard]] virtual std::optional<double> wakeAt() const = 0;
  /// One frame. False when the touchpad is lost; `destroy` is then called.
  [[nodiscard]] virtual bool write(std::span<const input_event> frame) = 0;
  /// The touchpad vanishes, and with it whatever it holds down.
  virtual void destroy() = 0;
};

}  // namespace velotap
