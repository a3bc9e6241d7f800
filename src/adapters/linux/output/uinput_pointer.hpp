// The one virtual pointer and keyboard through which everything but gestures leaves.
//
// One device rather than two, because the order of a modifier and a click from two devices is lost
// on the way to applications. It has wheels, because a pointer without one makes the desktop hold
// back its middle button. Its `phys` names us, so that our own input side never reads it.
#pragma once

#include <atomic>
#include <cstdint>
#include <span>

#include "adapters/linux/output/virtual_device.hpp"
#include "adapters/linux/runtime/descriptor.hpp"

namespace velotap {

class UinputPointer final : public VirtualDevice {
 public:
  /// `keys` are the evdev key codes that will ever be pressed; a device cannot learn more later.
  explicit UinputPointer(std::span<const std::uint16_t> keys) : keys_(keys) {}

  [[nodiscard]] int open() override;
  [[nodiscard]] bool emit(std::span<const input_event> frame) override;
  void close() override;
  /// Any thread: the open file of the device; -1 while there is none. Changes only when the device
  /// is lost or closed.
  [[nodiscard]] int descriptor() const noexcept { return shown_; }

 private:
  std::span<const std::uint16_t> keys_;
  Descriptor device_;
  std::atomic<int> shown_{-1};
};

}  // namespace velotap
