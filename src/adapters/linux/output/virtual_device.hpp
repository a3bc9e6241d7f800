// A device of our own as the output sees it: something that takes frames of input events.
//
// One thread at a time. Tests put a recording one in its place.
#pragma once

#include <linux/input.h>

#include <span>

namespace velotap {

class VirtualDevice {
 public:
  virtual ~VirtualDevice() = default;
  /// Makes the device appear, if it is not there. Zero, or the system's error number.
  [[nodiscard]] virtual int open() = 0;
  /// Writes one frame with one system call; false when the device is lost, and it is then gone.
  [[nodiscard]] virtual bool emit(std::span<const input_event> frame) = 0;
  /// The device vanishes; the kernel releases whatever it holds down.
  virtual void close() = 0;
};

}  // namespace velotap
