#include "input/gesture_device.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace velotap {
namespace {

constexpr std::string_view kKey = "settings.gestureDevice";

std::optional<GestureDevice> storedDevice(const DefaultsStore& defaults) {
  const auto text = defaults.text(kKey);
  return text ? gestureDevice(*text) : std::nullopt;
}

GestureDevice firstConnected(std::span<const DeviceClass> connected) {
  const auto has = [connected](DeviceClass deviceClass) {
    return std::find(connected.begin(), connected.end(), deviceClass) != connected.end();
  };
  const bool onlyTrackpad = has(DeviceClass::trackpad) && !has(DeviceClass::magicMouse);
  return onlyTrackpad ? GestureDevice::trackpad : GestureDevice::mouse;
}

}  // namespace

std::string_view gestureDeviceText(GestureDevice device) noexcept {
  return device == GestureDevice::mouse ? "mouse" : "trackpad";
}

std::optional<GestureDevice> gestureDevice(std::string_view text) noexcept {
  for (const GestureDevice device : kAllGestureDevices) {
    if (gestureDeviceText(device) == text) return device;
  }
  return std::nullopt;
}

std::string_view gestureDeviceTitleKey(GestureDevice device) noexcept {
  return device == GestureDevice::mouse ? "Magic Mouse" : "Trackpad";
}

GestureDeviceSelection::GestureDeviceSelection(DefaultsStore& defaults)
    : defaults_(defaults), device_(storedDevice(defaults).value_or(GestureDevice::mouse)) {}

void GestureDeviceSelection::setDevice(GestureDevice device) {
  device_ = device;
  defaults_.set(kKey, std::string(gestureDeviceText(device)));
  changes_.notify(device);
}

void GestureDeviceSelection::restore(std::span<const DeviceClass> connectedDevices) {
  const auto stored = storedDevice(defaults_);
  setDevice(stored ? *stored : firstConnected(connectedDevices));
}

Observation GestureDeviceSelection::observe(std::function<void(GestureDevice)> changed) {
  return changes_.add(std::move(changed));
}

}  // namespace velotap
