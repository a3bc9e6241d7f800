// The virtual touchpad as a kernel device.
//
// It says that it is a 200 x 150 mm clickpad on Bluetooth: desktops take a touchpad on another bus
// for the built-in one, and silence that while somebody types. It carries our own physical path,
// by which the program knows its own devices and never reads them.
//
// A device that was just created is of no use until udev has described it and the desktop has
// opened it: `ready` says so kReadyAfterUdev after udev's word, or kReadyWithoutUdev after the
// creation where no udev is running. One thread; never waits.
#pragma once

#include <libudev.h>

#include <memory>
#include <optional>
#include <string>

#include "adapters/linux/gesture/pad_device.hpp"

namespace velotap {

inline constexpr double kReadyAfterUdev = 0.2;
inline constexpr double kReadyWithoutUdev = 2.0;

class UinputTouchpad final : public PadDevice {
 public:
  /// By which desktops know it, and keep settings for it.
  static constexpr const char* kName = "Velotap Gestures";

  explicit UinputTouchpad(std::string node = "/dev/uinput");
  ~UinputTouchpad() override;
  UinputTouchpad(const UinputTouchpad&) = delete;
  UinputTouchpad& operator=(const UinputTouchpad&) = delete;

  [[nodiscard]] int create(double now) override;
  [[nodiscard]] bool ready(double now) override;
  [[nodiscard]] int wakeDescriptor() const override;
  [[nodiscard]] std::optional<double> wakeAt() const override;
  [[nodiscard]] bool write(std::span<const input_event> frame) override;
  void destroy() override;

 private:
  struct UdevRelease {
    void operator()(udev* p) const noexcept { udev_unref(p); }
    void operator()(udev_monitor* p) const noexcept { udev_monitor_unref(p); }
    void operator()(udev_device* p) const noexcept { udev_device_unref(p); }
  };

  [[nodiscard]] int setUp();
  void watchUdev();
  [[nodiscard]] bool udevHasSpoken();

  std::string node_;
  int descriptor_ = -1;
  std::string systemName_;  ///< the kernel's name for the input device, "input17"
  std::unique_ptr<udev, UdevRelease> udev_;
  std::unique_ptr<udev_monitor, UdevRelease> monitor_;  ///< until the device is ready
  double readyAt_ = 0;
};

}  // namespace velotap
