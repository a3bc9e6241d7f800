// Says what a desktop would see: one line for each event of libinput, on the seat that every
// desktop uses.
//
//   libinput_watch [--tap] [--click-method=clickfinger|areas] [--messages]
//
// --tap switches tap-to-click on where a device has it; --messages shows libinput's own remarks.
// A line begins with what happened, then the node, the device's physical path ("-" when it has
// none) and its name in quotes, then the details; `time` is the event's, `at` when it arrived here,
// both in seconds of the monotonic clock:
//
//   button event5 velotap/pointer "Velotap pointer" BTN_MIDDLE press time=12.100211 at=12.100804
//
// Prints "watching" once the devices that were there first have been listed. Ends on SIGTERM.
#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <libinput.h>
#include <libudev.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "guest_io.hpp"

namespace velotap::vm {
namespace {

struct Options {
  bool tap = false;
  bool messages = false;
  std::optional<libinput_config_click_method> clickMethod;
};

volatile std::sig_atomic_t stopped = 0;
void stop(int) {
  stopped = 1;
}

int openRestricted(const char* path, int flags, void*) {
  const int fd = open(path, flags | O_CLOEXEC);
  return fd < 0 ? -errno : fd;
}
void closeRestricted(int fd, void*) {
  close(fd);
}
constexpr libinput_interface kInterface{openRestricted, closeRestricted};

void remark(libinput*, libinput_log_priority, const char* format, va_list arguments) {
  std::printf("message ");
  std::vprintf(format, arguments);
}

std::string physicalPath(libinput_device* device) {
  udev_device* node = libinput_device_get_udev_device(device);
  if (node == nullptr) return "-";
  udev_device* input = udev_device_get_parent_with_subsystem_devtype(node, "input", nullptr);
  const char* phys = input != nullptr ? udev_device_get_sysattr_value(input, "phys") : nullptr;
  std::string text = phys != nullptr && *phys != '\0' ? phys : "-";
  udev_device_unref(node);
  return text;
}

/// The beginning of every line about a device. The path is read when the device appears: it is gone
/// with the device, and a line about the removal still wants it.
void begin(const char* what, libinput_device* device) {
  const auto* phys = static_cast<const std::string*>(libinput_device_get_user_data(device));
  std::printf("%s %s %s \"%s\"", what, libinput_device_get_sysname(device),
              phys != nullptr ? phys->c_str() : "-", libinput_device_get_name(device));
}

void end(std::uint64_t eventMicroseconds) {
  std::printf(" time=%.6f at=%.6f\n", static_cast<double>(eventMicroseconds) / 1e6,
              secondsOf(monotonicNanoseconds()));
}

void added(libinput_device* device, const Options& options) {
  libinput_device_set_user_data(device, new std::string(physicalPath(device)));
  const int tapFingers = libinput_device_config_tap_get_finger_count(device);
  if (options.tap && tapFingers > 0) {
    libinput_device_config_tap_set_enabled(device, LIBINPUT_CONFIG_TAP_ENABLED);
  }
  if (options.clickMethod &&
      (libinput_device_config_click_get_methods(device) & *options.clickMethod) != 0) {
    libinput_device_config_click_set_method(device, *options.clickMethod);
  }
  begin("added", device);
  std::printf(" id=%04x:%04x capabilities=", libinput_device_get_id_vendor(device),
              libinput_device_get_id_product(device));
  constexpr std::array<std::pair<libinput_device_capability, const char*>, 3> kCapabilities{
      {{LIBINPUT_DEVICE_CAP_POINTER, "pointer,"},
       {LIBINPUT_DEVICE_CAP_KEYBOARD, "keyboard,"},
       {LIBINPUT_DEVICE_CAP_GESTURE, "gesture,"}}};
  for (const auto& [capability, name] : kCapabilities) {
    if (libinput_device_has_capability(device, capability) != 0) std::printf("%s", name);
  }
  double width = 0;
  double height = 0;
  if (libinput_device_get_size(device, &width, &height) == 0) {
    std::printf(" size=%.0fx%.0f", width, height);
  }
  std::printf(" tap=%d/%d click=%d\n", libinput_device_config_tap_get_enabled(device), tapFingers,
              libinput_device_config_click_get_method(device));
}

void removed(libinput_device* device) {
  begin("removed", device);
  std::printf("\n");
  delete static_cast<std::string*>(libinput_device_get_user_data(device));
  libinput_device_set_user_data(device, nullptr);
}

const char* codeName(unsigned code) {
  const char* name = libevdev_event_code_get_name(EV_KEY, code);
  return name != nullptr ? name : "?";
}

void button(libinput_event* event, libinput_device* device) {
  libinput_event_pointer* pointer = libinput_event_get_pointer_event(event);
  begin("button", device);
  const bool pressed =
      libinput_event_pointer_get_button_state(pointer) == LIBINPUT_BUTTON_STATE_PRESSED;
  std::printf(" %s %s", codeName(libinput_event_pointer_get_button(pointer)),
              pressed ? "press" : "release");
  end(libinput_event_pointer_get_time_usec(pointer));
}

void key(libinput_event* event, libinput_device* device) {
  libinput_event_keyboard* keyboard = libinput_event_get_keyboard_event(event);
  begin("key", device);
  const bool pressed =
      libinput_event_keyboard_get_key_state(keyboard) == LIBINPUT_KEY_STATE_PRESSED;
  std::printf(" %s %s", codeName(libinput_event_keyboard_get_key(keyboard)),
              pressed ? "press" : "release");
  end(libinput_event_keyboard_get_time_usec(keyboard));
}

void motion(libinput_event* event, libinput_device* device) {
  libinput_event_pointer* pointer = libinput_event_get_pointer_event(event);
  begin("motion", device);
  std::printf(" dx=%.2f dy=%.2f raw=%.2f,%.2f", libinput_event_pointer_get_dx(pointer),
              libinput_event_pointer_get_dy(pointer),
              libinput_event_pointer_get_dx_unaccelerated(pointer),
              libinput_event_pointer_get_dy_unaccelerated(pointer));
  end(libinput_event_pointer_get_time_usec(pointer));
}

void scroll(libinput_event* event, libinput_device* device, const char* source, bool wheel) {
  libinput_event_pointer* pointer = libinput_event_get_pointer_event(event);
  begin("scroll", device);
  std::printf(" %s", source);
  constexpr std::array<std::pair<libinput_pointer_axis, const char*>, 2> kAxes{
      {{LIBINPUT_POINTER_AXIS_SCROLL_VERTICAL, "vertical"},
       {LIBINPUT_POINTER_AXIS_SCROLL_HORIZONTAL, "horizontal"}}};
  for (const auto& [axis, name] : kAxes) {
    if (libinput_event_pointer_has_axis(pointer, axis) == 0) continue;
    std::printf(" %s=%.2f", name, libinput_event_pointer_get_scroll_value(pointer, axis));
    if (wheel) {
      std::printf(" v120=%.0f", libinput_event_pointer_get_scroll_value_v120(pointer, axis));
    }
  }
  end(libinput_event_pointer_get_time_usec(pointer));
}

enum class GesturePhase { begin, update, end };

void gesture(libinput_event* event, libinput_device* device, const char* name, GesturePhase phase) {
  libinput_event_gesture* data = libinput_event_get_gesture_event(event);
  const libinput_event_type type = libinput_event_get_type(event);
  const bool pinch = type == LIBINPUT_EVENT_GESTURE_PINCH_BEGIN ||
                     type == LIBINPUT_EVENT_GESTURE_PINCH_UPDATE ||
                     type == LIBINPUT_EVENT_GESTURE_PINCH_END;
  begin("gesture", device);
  std::printf(" %s fingers=%d", name, libinput_event_gesture_get_finger_count(data));
  if (phase == GesturePhase::update) {
    std::printf(" dx=%.2f dy=%.2f", libinput_event_gesture_get_dx(data),
                libinput_event_gesture_get_dy(data));
  }
  if (pinch) std::printf(" scale=%.4f", libinput_event_gesture_get_scale(data));
  if (pinch && phase == GesturePhase::update) {
    std::printf(" angle=%.3f", libinput_event_gesture_get_angle_delta(data));
  }
  if (phase == GesturePhase::end) {
    std::printf(" cancelled=%d", libinput_event_gesture_get_cancelled(data));
  }
  end(libinput_event_gesture_get_time_usec(data));
}

void print(libinput_event* event, const Options& options) {
  libinput_device* device = libinput_event_get_device(event);
  const libinput_event_type type = libinput_event_get_type(event);
  // libinput's own enumeration is open: newer versions add events, which are shown by number.
  switch (static_cast<int>(type)) {
    case LIBINPUT_EVENT_DEVICE_ADDED:
      return added(device, options);
    case LIBINPUT_EVENT_DEVICE_REMOVED:
      return removed(device);
    case LIBINPUT_EVENT_KEYBOARD_KEY:
      return key(event, device);
    case LIBINPUT_EVENT_POINTER_BUTTON:
      return button(event, device);
    case LIBINPUT_EVENT_POINTER_MOTION:
      return motion(event, device);
    case LIBINPUT_EVENT_POINTER_SCROLL_WHEEL:
      return scroll(event, device, "wheel", true);
    case LIBINPUT_EVENT_POINTER_SCROLL_FINGER:
      return scroll(event, device, "finger", false);
    case LIBINPUT_EVENT_POINTER_SCROLL_CONTINUOUS:
      return scroll(event, device, "continuous", false);
    case LIBINPUT_EVENT_POINTER_AXIS:
      return;  // the older form of the scroll events above, sent beside them
    case LIBINPUT_EVENT_GESTURE_SWIPE_BEGIN:
      return gesture(event, device, "swipe-begin", GesturePhase::begin);
    case LIBINPUT_EVENT_GESTURE_SWIPE_UPDATE:
      return gesture(event, device, "swipe-update", GesturePhase::update);
    case LIBINPUT_EVENT_GESTURE_SWIPE_END:
      return gesture(event, device, "swipe-end", GesturePhase::end);
    case LIBINPUT_EVENT_GESTURE_PINCH_BEGIN:
      return gesture(event, device, "pinch-begin", GesturePhase::begin);
    case LIBINPUT_EVENT_GESTURE_PINCH_UPDATE:
      return gesture(event, device, "pinch-update", GesturePhase::update);
    case LIBINPUT_EVENT_GESTURE_PINCH_END:
      return gesture(event, device, "pinch-end", GesturePhase::end);
    case LIBINPUT_EVENT_GESTURE_HOLD_BEGIN:
      return gesture(event, device, "hold-begin", GesturePhase::begin);
    case LIBINPUT_EVENT_GESTURE_HOLD_END:
      return gesture(event, device, "hold-end", GesturePhase::end);
    default:
      begin("other", device);
      std::printf(" type=%d\n", static_cast<int>(type));
  }
}

void dispatch(libinput* context, const Options& options) {
  libinput_dispatch(context);
  while (libinput_event* event = libinput_get_event(context)) {
    print(event, options);
    libinput_event_destroy(event);
  }
}

std::optional<Options> parseOptions(std::span<char*> arguments) {
  Options options;
  for (const std::string_view argument : arguments) {
    if (argument == "--tap") {
      options.tap = true;
    } else if (argument == "--messages") {
      options.messages = true;
    } else if (argument == "--click-method=clickfinger") {
      options.clickMethod = LIBINPUT_CONFIG_CLICK_METHOD_CLICKFINGER;
    } else if (argument == "--click-method=areas") {
      options.clickMethod = LIBINPUT_CONFIG_CLICK_METHOD_BUTTON_AREAS;
    } else {
      return std::nullopt;
    }
  }
  return options;
}

int watch(const Options& options) {
  const std::unique_ptr<udev, decltype(&udev_unref)> udevContext(udev_new(), udev_unref);
  const std::unique_ptr<libinput, decltype(&libinput_unref)> context(
      libinput_udev_create_context(&kInterface, nullptr, udevContext.get()), libinput_unref);
  if (!context) {
    std::fputs("libinput_watch: libinput does not start\n", stderr);
    return 1;
  }
  if (options.messages) libinput_log_set_handler(context.get(), remark);
  if (libinput_udev_assign_seat(context.get(), "seat0") != 0) {
    std::fputs("libinput_watch: no seat\n", stderr);
    return 1;
  }
  dispatch(context.get(), options);
  std::puts("watching");
  pollfd polled{libinput_get_fd(context.get()), POLLIN, 0};
  while (stopped == 0) {
    if (poll(&polled, 1, -1) > 0) dispatch(context.get(), options);
  }
  return 0;
}

}  // namespace
}  // namespace velotap::vm

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  struct sigaction action {};
  action.sa_handler = velotap::vm::stop;
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGINT, &action, nullptr);
  const auto options =
      velotap::vm::parseOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
  if (!options) {
    std::fputs("usage: libinput_watch [--tap] [--click-method=clickfinger|areas] [--messages]\n",
               stderr);
    return 2;
  }
  return velotap::vm::watch(*options);
}
