// What an evdev device says of itself: identity, properties, keys, axes with their ranges.
//
// A plain value: it comes from a real device, from a recording or from a test.
#pragma once

#include <linux/input.h>

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>

namespace velotap {

struct AxisInfo {
  std::int32_t minimum = 0;
  std::int32_t maximum = 0;
  std::int32_t fuzz = 0;
  std::int32_t flat = 0;
  std::int32_t resolution = 0;  ///< units per millimetre; 0 when unknown
};

struct EvdevDevice {
  std::string name;
  std::string phys;
  std::uint16_t bus = 0;
  std::uint16_t vendor = 0;
  std::uint16_t product = 0;
  std::uint16_t version = 0;
  std::bitset<INPUT_PROP_CNT> properties;
  std::bitset<KEY_CNT> keys;
  std::bitset<REL_CNT> relativeAxes;
  std::bitset<MSC_CNT> miscellany;  ///< codes of EV_MSC; only of a live device, for its mirror
  std::array<std::optional<AxisInfo>, ABS_CNT> absoluteAxes;
};

}  // namespace velotap
