// A virtual device that looks like a real one: same name, numbers, keys, axes, properties.
//
// A touch mouse is mirrored without its touch surface: as the desktop sees it, it has none. One
// thread, but for `write`.
#pragma once

#include <linux/input.h>

#include <span>
#include <string>

#include "adapters/linux/evdev/evdev_device.hpp"
#include "adapters/linux/runtime/descriptor.hpp"

namespace velotap {

class UinputMirror {
 public:
  /// The system's error number or 0.
  [[nodiscard]] int create(const EvdevDevice& device, const char* phys);
  void remove() { device_.reset(); }
  [[nodiscard]] bool write(std::span<const input_event> frames) const;
  [[nodiscard]] int descriptor() const noexcept { return device_.get(); }
  /// What the kernel calls it: "input12". Empty when it does not tell.
  [[nodiscard]] std::string systemName() const;

 private:
  Descriptor device_;
};

}  // namespace velotap
