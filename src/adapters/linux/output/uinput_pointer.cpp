#include "adapters/linux/output/uinput_pointer.hpp"

#include <fcntl.h>
#include <linux/uinput.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace velotap {
namespace {

constexpr const char* kName = "Velotap Pointer";
constexpr const char* kPhys = "velotap/pointer";

constexpr std::array kButtons = {BTN_LEFT, BTN_RIGHT, BTN_MIDDLE, BTN_SIDE, BTN_EXTRA};
constexpr std::array kAxes = {
    REL_X, REL_Y, REL_WHEEL, REL_HWHEEL, REL_WHEEL_HI_RES, REL_HWHEEL_HI_RES};

bool declare(int fd, std::span<const std::uint16_t> keys) {
  bool ok = ::ioctl(fd, UI_SET_PHYS, kPhys) == 0 && ::ioctl(fd, UI_SET_EVBIT, EV_KEY) == 0 &&
            ::ioctl(fd, UI_SET_EVBIT, EV_REL) == 0;
  for (const int button : kButtons) ok = ok && ::ioctl(fd, UI_SET_KEYBIT, button) == 0;
  for (const std::uint16_t key : keys) ok = ok && ::ioctl(fd, UI_SET_KEYBIT, int{key}) == 0;
  for (const int axis : kAxes) ok = ok && ::ioctl(fd, UI_SET_RELBIT, axis) == 0;
  uinput_setup setup{};
  setup.id.bustype = BUS_VIRTUAL;
  std::strncpy(setup.name, kName, sizeof setup.name - 1);
  return ok && ::ioctl(fd, UI_DEV_SETUP, &setup) == 0 && ::ioctl(fd, UI_DEV_CREATE) == 0;
}

}  // namespace

int UinputPointer::open() {
  if (device_.ok()) return 0;
  Descriptor fd(::open("/dev/uinput", O_WRONLY | O_NONBLOCK | O_CLOEXEC));
  if (!fd.ok() || !declare(fd.get(), keys_)) return errno;
  device_ = std::move(fd);
  shown_ = device_.get();
  return 0;
}

void UinputPointer::close() {
  shown_ = -1;
  device_.reset();
}

bool UinputPointer::emit(std::span<const input_event> frame) {
  const auto size = static_cast<ssize_t>(frame.size_bytes());
  ssize_t written = -1;
  do {
    written = device_.ok() ? ::write(device_.get(), frame.data(), frame.size_bytes()) : -1;
  } while (written < 0 && device_.ok() && errno == EINTR);
  if (written == size) return true;
  close();
  return false;
}

}  // namespace velotap
