// What kind of surface a device is, and how its raw numbers become positions and sizes.
//
// Pure; decided once for each device.
#pragma once

#include <cstdint>

#include "adapters/linux/evdev/evdev_device.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

/// How the kernel reports contacts.
enum class ContactProtocol {
  slots,      ///< protocol B: one slot for each contact, with tracking identifiers
  anonymous,  ///< protocol A: all contacts in every frame
};

struct SurfaceModel {
  std::int32_t familyId = 0;  ///< 112 for Magic Mice, 128 and up for trackpads
  bool builtIn = false;
  ContactProtocol protocol = ContactProtocol::slots;
  bool countsWithTools = false;  ///< BTN_TOOL_* tell how many fingers there really are
  int slots = 0;

  // Positions: raw = minimum … maximum, y growing downwards as everywhere in evdev.
  double minX = 0, minY = 0;
  double width = 1, height = 1;             ///< in raw units, never 0
  double unitsPerMmX = 1, unitsPerMmY = 1;  ///< never 0

  // Sizes of a resting fingertip, in raw units; 0 where the device reports none.
  double fingertipMajor = 0;
  double fingertipMinor = 0;
  double palmMajor = 0;  ///< a contact at least this long is no fingertip; 0 where unknown

  [[nodiscard]] double widthMm() const noexcept { return width / unitsPerMmX; }
  [[nodiscard]] double heightMm() const noexcept { return height / unitsPerMmY; }
  /// y grows upwards from here on.
  [[nodiscard]] MTPoint normalised(std::int32_t x, std::int32_t y) const noexcept;
  [[nodiscard]] MTPoint millimetres(std::int32_t x, std::int32_t y) const noexcept;
};

[[nodiscard]] SurfaceModel surfaceModel(const EvdevDevice& device);

}  // namespace velotap
