// The two kinds of surface that the program serves, told apart by a device's family identifier.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace velotap {

enum class DeviceClass { magicMouse, trackpad };

inline constexpr std::array kAllDeviceClasses = {DeviceClass::magicMouse, DeviceClass::trackpad};

/// Three families are Magic Mice; every other device, one of unknown family included, is a
/// trackpad. Whether it is built in plays no part.
[[nodiscard]] constexpr DeviceClass classifyDevice(std::int32_t familyId) noexcept {
  return familyId == 84 || familyId == 112 || familyId == 113 ? DeviceClass::magicMouse
                                                              : DeviceClass::trackpad;
}

/// The enumerator's name, as diagnostic lines print it.
[[nodiscard]] constexpr std::string_view deviceClassName(DeviceClass deviceClass) noexcept {
  return deviceClass == DeviceClass::magicMouse ? "magicMouse" : "trackpad";
}

}  // namespace velotap
