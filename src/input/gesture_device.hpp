// Which device's gestures the settings window shows: the user's choice, remembered.
//
// Main thread.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "base/observer_list.hpp"
#include "config/defaults_store.hpp"
#include "input/device_class.hpp"

namespace velotap {

enum class GestureDevice { mouse, trackpad };

inline constexpr std::array kAllGestureDevices = {GestureDevice::mouse, GestureDevice::trackpad};

/// As it is stored: "mouse" or "trackpad".
[[nodiscard]] std::string_view gestureDeviceText(GestureDevice device) noexcept;
/// Nothing for any other text; case matters.
[[nodiscard]] std::optional<GestureDevice> gestureDevice(std::string_view text) noexcept;
/// The key of its name in the localisation tables.
[[nodiscard]] std::string_view gestureDeviceTitleKey(GestureDevice device) noexcept;

class GestureDeviceSelection {
 public:
  /// Takes what is stored, the mouse if nothing is that makes sense; writes nothing.
  explicit GestureDeviceSelection(DefaultsStore& defaults);

  [[nodiscard]] GestureDevice device() const noexcept { return device_; }
  /// Publishes the choice and remembers it.
  void setDevice(GestureDevice device);

  /// An earlier choice wins, even if that device is not connected; otherwise the first connected
  /// kind, the mouse before the trackpad. Either way the result is remembered.
  void restore(std::span<const DeviceClass> connectedDevices);

  [[nodiscard]] Observation observe(std::function<void(GestureDevice)> changed);

 private:
  DefaultsStore& defaults_;
  GestureDevice device_;
  ObserverList<GestureDevice> changes_;
};

}  // namespace velotap
