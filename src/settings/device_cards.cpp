#include "settings/device_cards.hpp"

#include <algorithm>

namespace velotap {
namespace {

bool contains(std::span<const DeviceClass> connected, GestureDevice device) {
  return std::find(connected.begin(), connected.end(), deviceClassOf(device)) != connected.end();
}

ConnectedDeviceCard card(GestureDevice device, std::string_view symbol,
                         std::span<const DeviceClass> connected, const Texts& texts) {
  const std::string name = texts(gestureDeviceTitleKey(device));
  const bool isConnected = contains(connected, device);
  return {.device = device,
          .symbol = symbol,
          .name = name,
          .status = texts(isConnected ? "Connected" : "gesture.device.disconnected"),
          .connected = isConnected,
          .help = texts("design.device.card.help", {name})};
}

}  // namespace

DeviceClass deviceClassOf(GestureDevice device) noexcept {
  return device == GestureDevice::mouse ? DeviceClass::magicMouse : DeviceClass::trackpad;
}

DeviceConnectionStatus deviceConnectionStatus(GestureDevice device,
                                              std::span<const DeviceClass> connected,
                                              bool available, const Texts& texts) {
  if (!available) {
    return {.symbol = "info.circle", .text = texts("gesture.device.unavailable")};
  }
  if (contains(connected, device)) {
    return {.symbol = "cable.connector", .text = texts("Connected"), .connected = true};
  }
  return {.symbol = "info.circle", .text = texts("gesture.device.disconnected")};
}

std::vector<ConnectedDeviceCard> connectedDeviceCards(std::span<const DeviceClass> connected,
                                                      const Texts& texts) {
  return {card(GestureDevice::trackpad, "rectangle.and.hand.point.up.left", connected, texts),
          card(GestureDevice::mouse, "computermouse", connected, texts)};
}

}  // namespace velotap
