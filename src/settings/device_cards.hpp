// What the settings window says about each kind of device: whether one is connected.
//
// Pure; any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "input/device_class.hpp"
#include "input/gesture_device.hpp"
#include "localization/texts.hpp"

namespace velotap {

[[nodiscard]] DeviceClass deviceClassOf(GestureDevice device) noexcept;

/// One line: a symbol and a word.
struct DeviceConnectionStatus {
  std::string_view symbol{};
  std::string text;
  bool connected = false;
};

/// `available` is false where this system cannot handle the kind at all.
[[nodiscard]] DeviceConnectionStatus deviceConnectionStatus(GestureDevice device,
                                                            std::span<const DeviceClass> connected,
                                                            bool available, const Texts& texts);

/// A card that leads to the gestures of its kind.
struct ConnectedDeviceCard {
  GestureDevice device = GestureDevice::trackpad;
  std::string_view symbol{};
  std::string name;
  std::string status;
  bool connected = false;
  std::string help;
};

/// The trackpad, then the mouse.
[[nodiscard]] std::vector<ConnectedDeviceCard> connectedDeviceCards(
    std::span<const DeviceClass> connected, const Texts& texts);

}  // namespace velotap
