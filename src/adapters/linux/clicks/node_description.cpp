#include "adapters/linux/clicks/node_description.hpp"

#include <sys/ioctl.h>

#include <array>

namespace velotap {
namespace {

template <std::size_t Bits>
std::bitset<Bits> unpacked(const std::array<std::uint8_t, (Bits + 7) / 8>& bytes) {
  std::bitset<Bits> bits;
  for (std::size_t i = 0; i < Bits; ++i) bits[i] = (bytes[i / 8] >> (i % 8) & 1U) != 0;
  return bits;
}

template <std::size_t Bits>
std::bitset<Bits> codesOf(int fd, unsigned type) {
  std::array<std::uint8_t, (Bits + 7) / 8> bytes{};
  ::ioctl(fd, EVIOCGBIT(type, bytes.size()), bytes.data());
  return unpacked<Bits>(bytes);
}

}  // namespace

bool readDescription(int descriptor, EvdevDevice& device) {
  input_id id{};
  if (::ioctl(descriptor, EVIOCGID, &id) != 0) return false;
  device.bus = id.bustype;
  device.vendor = id.vendor;
  device.product = id.product;
  device.version = id.version;
  std::array<char, 256> text{};
  if (::ioctl(descriptor, EVIOCGNAME(text.size() - 1), text.data()) >= 0) device.name = text.data();
  text.fill('\0');
  if (::ioctl(descriptor, EVIOCGPHYS(text.size() - 1), text.data()) >= 0) device.phys = text.data();
  std::array<std::uint8_t, (INPUT_PROP_CNT + 7) / 8> properties{};
  ::ioctl(descriptor, EVIOCGPROP(properties.size()), properties.data());
  device.properties = unpacked<INPUT_PROP_CNT>(properties);
  device.keys = codesOf<KEY_CNT>(descriptor, EV_KEY);
  device.relativeAxes = codesOf<REL_CNT>(descriptor, EV_REL);
  device.miscellany = codesOf<MSC_CNT>(descriptor, EV_MSC);
  const auto axes = codesOf<ABS_CNT>(descriptor, EV_ABS);
  for (unsigned axis = 0; axis < ABS_CNT; ++axis) {
    input_absinfo info{};
    if (!axes[axis] || ::ioctl(descriptor, EVIOCGABS(axis), &info) != 0) continue;
    device.absoluteAxes[axis] = AxisInfo{.minimum = info.minimum,
                                         .maximum = info.maximum,
                                         .fuzz = info.fuzz,
                                         .flat = info.flat,
                                         .resolution = info.resolution};
  }
  return true;
}

}  // namespace velotap
