// Which input devices are multitouch surfaces that the program serves: trackpads, and mice with a
// touch surface. Touch screens are not, nor are devices of our own.
//
// Decided from what sysfs shows of an input device, without opening it. Pure.
#pragma once

#include <string_view>

namespace velotap {

/// What `/sys/class/input/inputN` says of a device. Capability bitmaps are the kernel's text: words
/// in hexadecimal, the most significant first.
struct SurfaceDescription {
  std::string_view absoluteAxes;  ///< capabilities/abs
  std::string_view properties;    ///< properties
  std::string_view phys;          ///< phys
};

[[nodiscard]] bool isMultitouchSurface(const SurfaceDescription& device) noexcept;

/// Whether bit `bit` is set in a bitmap as sysfs prints it.
[[nodiscard]] bool bitmapHas(std::string_view bitmap, unsigned bit) noexcept;

/// Devices that the program makes itself carry this at the beginning of their `phys`.
inline constexpr std::string_view kOwnPhysPrefix = "velotap/";

}  // namespace velotap
