#include "adapters/linux/gesture/uinput_touchpad.hpp"

#include <fcntl.h>
#include <linux/uinput.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <utility>

#include "adapters/linux/gesture/gesture_player.hpp"
#include "adapters/linux/gesture/pad_encoder.hpp"

namespace velotap {
namespace {

constexpr const char* kPhysicalPath = "velotap/gesture";

constexpr std::array kKeys = {BTN_TOUCH, BTN_TOOL_FINGER, BTN_TOOL_DOUBLETAP, BTN_LEFT};
constexpr std::array kProperties = {INPUT_PROP_POINTER, INPUT_PROP_BUTTONPAD};

struct Axis {
  int code;
  int maximum;
  int resolution;
};
constexpr int kMaximumX = static_cast<int>(kPadWidth) * kUnitsPerMillimetre;
constexpr int kMaximumY = static_cast<int>(kPadHeight) * kUnitsPerMillimetre;
constexpr std::array kAxes = {
    Axis{ABS_X, kMaximumX, kUnitsPerMillimetre},
    Axis{ABS_Y, kMaximumY, kUnitsPerMillimetre},
    Axis{ABS_MT_SLOT, kTouchpadSlots - 1, 0},
    Axis{ABS_MT_TRACKING_ID, kLastTrackingId, 0},
    Axis{ABS_MT_POSITION_X, kMaximumX, kUnitsPerMillimetre},
    Axis{ABS_MT_POSITION_Y, kMaximumY, kUnitsPerMillimetre},
};

bool declareAxis(int descriptor, const Axis& axis) {
  uinput_abs_setup setup{};
  setup.code = static_cast<std::uint16_t>(axis.code);
  setup.absinfo.maximum = axis.maximum;
  setup.absinfo.resolution = axis.resolution;
  return ioctl(descriptor, UI_SET_ABSBIT, axis.code) == 0 &&
         ioctl(descriptor, UI_ABS_SETUP, &setup) == 0;
}

bool declareAll(int descriptor) {
  const auto set = [&](unsigned long request, int code) {
    return ioctl(descriptor, request, code) == 0;
  };
  // The physical path has to be there before the device is: udev's rules match it.
  return ioctl(descriptor, UI_SET_PHYS, kPhysicalPath) == 0 && set(UI_SET_EVBIT, EV_KEY) &&
         set(UI_SET_EVBIT, EV_ABS) &&
         std::ranges::all_of(kKeys, [&](int key) { return set(UI_SET_KEYBIT, key); }) &&
         std::ranges::all_of(kProperties, [&](int p) { return set(UI_SET_PROPBIT, p); }) &&
         std::ranges::all_of(kAxes, [&](const Axis& a) { return declareAxis(descriptor, a); });
}

}  // namespace

UinputTouchpad::UinputTouchpad(std::string node) : node_(std::move(node)) {}

UinputTouchpad::~UinputTouchpad() {
  destroy();
}

int UinputTouchpad::create(double now) {
  if (descriptor_ >= 0) return 0;
  // Watching begins first, or udev could speak before anybody listens.
  watchUdev();
  const int error = setUp();
  if (error != 0) {
    destroy();
    return error;
  }
  readyAt_ = now + kReadyWithoutUdev;
  return 0;
}

int UinputTouchpad::setUp() {
  descriptor_ = ::open(node_.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
  if (descriptor_ < 0) return errno;
  uinput_setup setup{};
  setup.id.bustype = BUS_BLUETOOTH;
  setup.id.version = 1;
  std::snprintf(setup.name, sizeof setup.name, "%s", kName);
  if (!declareAll(descriptor_) || ioctl(descriptor_, UI_DEV_SETUP, &setup) != 0 ||
      ioctl(descriptor_, UI_DEV_CREATE) != 0) {
    return errno;
  }
  std::array<char, 64> name{};
  if (ioctl(descriptor_, UI_GET_SYSNAME(name.size()), name.data()) >= 0) systemName_ = name.data();
  return 0;
}

void UinputTouchpad::watchUdev() {
  udev_.reset(udev_new());
  if (!udev_) return;
  monitor_.reset(udev_monitor_new_from_netlink(udev_.get(), "udev"));
  if (!monitor_) return;
  if (udev_monitor_filter_add_match_subsystem_devtype(monitor_.get(), "input", nullptr) < 0 ||
      udev_monitor_enable_receiving(monitor_.get()) < 0) {
    monitor_.reset();
  }
}

bool UinputTouchpad::udevHasSpoken() {
  bool spoken = false;
  while (true) {
    const std::unique_ptr<udev_device, UdevRelease> device(
        udev_monitor_receive_device(monitor_.get()));
    if (!device) return spoken;
    // The event node is the last of the device's parts, and the one that desktops open.
    udev_device* parent = udev_device_get_parent(device.get());
    const char* node = udev_device_get_devnode(device.get());
    if (parent != nullptr && node != nullptr && systemName_ == udev_device_get_sysname(parent) &&
        std::string_view(udev_device_get_sysname(device.get())).starts_with("event")) {
      spoken = true;
    }
  }
}

bool UinputTouchpad::ready(double now) {
  if (monitor_ && udevHasSpoken()) {
    monitor_.reset();
    udev_.reset();
    readyAt_ = std::min(readyAt_, now + kReadyAfterUdev);
  }
  if (descriptor_ < 0 || now < readyAt_) return false;
  monitor_.reset();
  udev_.reset();
  return true;
}

int UinputTouchpad::wakeDescriptor() const {
  return monitor_ ? udev_monitor_get_fd(monitor_.get()) : -1;
}

std::optional<double> UinputTouchpad::wakeAt() const {
  if (descriptor_ < 0) return std::nullopt;
  return readyAt_;
}

bool UinputTouchpad::write(std::span<const input_event> frame) {
  if (descriptor_ < 0) return false;
  ssize_t written = 0;
  do {
    written = ::write(descriptor_, frame.data(), frame.size_bytes());
  } while (written < 0 && errno == EINTR);
  return written == static_cast<ssize_t>(frame.size_bytes());
}

void UinputTouchpad::destroy() {
  monitor_.reset();
  udev_.reset();
  systemName_.clear();
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
}

}  // namespace velotap
