#include "adapters/linux/clicks/uinput_mirror.hpp"

#include <fcntl.h>
#include <linux/uinput.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "adapters/linux/clicks/mirror_stream.hpp"

namespace velotap {
namespace {

template <typename Bits>
bool declareAll(int fd, const Bits& codes, unsigned long type, unsigned long request) {
  if (codes.none()) return true;
  if (type != 0 && ::ioctl(fd, UI_SET_EVBIT, type) != 0) return false;
  for (std::size_t code = 0; code < codes.size(); ++code) {
    if (codes[code] && ::ioctl(fd, request, code) != 0) return false;
  }
  return true;
}

bool declareAxes(int fd, const EvdevDevice& device) {
  // Describing an axis does not yet make the device have any.
  if (::ioctl(fd, UI_SET_EVBIT, EV_ABS) != 0) return false;
  for (std::size_t code = 0; code < device.absoluteAxes.size(); ++code) {
    const auto& axis = device.absoluteAxes[code];
    if (!axis) continue;
    uinput_abs_setup setup{};
    setup.code = static_cast<std::uint16_t>(code);
    setup.absinfo.minimum = axis->minimum;
    setup.absinfo.maximum = axis->maximum;
    setup.absinfo.fuzz = axis->fuzz;
    setup.absinfo.flat = axis->flat;
    setup.absinfo.resolution = axis->resolution;
    if (::ioctl(fd, UI_ABS_SETUP, &setup) != 0) return false;
  }
  return true;
}

bool declare(int fd, const EvdevDevice& device, const char* phys) {
  bool ok = ::ioctl(fd, UI_SET_PHYS, phys) == 0 &&
            declareAll(fd, device.keys, EV_KEY, UI_SET_KEYBIT) &&
            declareAll(fd, device.relativeAxes, EV_REL, UI_SET_RELBIT) &&
            declareAll(fd, device.properties, 0, UI_SET_PROPBIT);
  // A desktop reads the contacts of a touchpad, and the device's own time where it has one. Of a
  // mouse it reads neither, and what is not declared need not be sent.
  if (ok && !isTouchMouse(device)) {
    ok = declareAxes(fd, device) && declareAll(fd, device.miscellany, EV_MSC, UI_SET_MSCBIT);
  }
  uinput_setup setup{};
  setup.id = {.bustype = device.bus,
              .vendor = device.vendor,
              .product = device.product,
              .version = device.version};
  std::strncpy(setup.name, device.name.c_str(), sizeof setup.name - 1);
  return ok && ::ioctl(fd, UI_DEV_SETUP, &setup) == 0 && ::ioctl(fd, UI_DEV_CREATE) == 0;
}

}  // namespace

int UinputMirror::create(const EvdevDevice& device, const char* phys) {
  Descriptor fd(::open("/dev/uinput", O_RDWR | O_NONBLOCK | O_CLOEXEC));
  if (!fd.ok() || !declare(fd.get(), device, phys)) return errno;
  device_ = std::move(fd);
  return 0;
}

bool UinputMirror::write(std::span<const input_event> frames) const {
  const auto size = static_cast<ssize_t>(frames.size_bytes());
  ssize_t written = -1;
  do {
    written = ::write(device_.get(), frames.data(), frames.size_bytes());
  } while (written < 0 && errno == EINTR);
  return written == size;
}

std::string UinputMirror::systemName() const {
  std::array<char, 64> name{};
  if (::ioctl(device_.get(), UI_GET_SYSNAME(name.size() - 1), name.data()) < 0) return {};
  return name.data();
}

}  // namespace velotap
