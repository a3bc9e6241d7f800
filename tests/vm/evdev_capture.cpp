// Records an event node as text in the format of evemu, which libinput's and the kernel's
// developers use for such recordings:
//
//   evdev_capture [--grab] NODE FILE
//
// With --grab nobody else hears of the device meanwhile, as with any program that takes it.
//
// Writes the device's description, prints "recording", then writes every event with its time since
// the first one. Ends on SIGTERM or when the device is unplugged; the file is complete then, and
// the monotonic time of the first event is printed.
#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <linux/input.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

#include "guest_io.hpp"

namespace velotap::vm {
namespace {

using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;

volatile std::sig_atomic_t stopped = 0;
void stop(int) {
  stopped = 1;
}

constexpr std::size_t bytesFor(std::size_t bits) {
  return (bits + 7) / 8;
}

void writeBytes(std::FILE* out, const char* prefix, std::span<const unsigned char> bytes) {
  constexpr std::size_t kBytesInLine = 8;
  for (std::size_t i = 0; i < bytes.size(); i += kBytesInLine) {
    std::fputs(prefix, out);
    for (std::size_t j = i; j < i + kBytesInLine; ++j) {
      std::fprintf(out, " %02x", j < bytes.size() ? bytes[j] : 0);
    }
    std::fputc('\n', out);
  }
}

/// Which properties, event types and codes the device has, as the kernel's own bit masks.
void writeCapabilities(std::FILE* out, int fd) {
  std::array<unsigned char, bytesFor(INPUT_PROP_CNT)> properties{};
  ioctl(fd, EVIOCGPROP(properties.size()), properties.data());
  writeBytes(out, "P:", properties);

  struct Type {
    unsigned type;
    std::size_t codes;
  };
  constexpr std::array<Type, 10> kTypes{{{0, EV_CNT},
                                         {EV_KEY, KEY_CNT},
                                         {EV_REL, REL_CNT},
                                         {EV_ABS, ABS_CNT},
                                         {EV_MSC, MSC_CNT},
                                         {EV_SW, SW_CNT},
                                         {EV_LED, LED_CNT},
                                         {EV_SND, SND_CNT},
                                         {EV_REP, REP_CNT},
                                         {EV_FF, FF_CNT}}};
  for (const Type& each : kTypes) {
    std::array<unsigned char, bytesFor(KEY_CNT)> mask{};
    const std::size_t size = bytesFor(each.codes);
    // A type that the device lacks answers with an error; its mask is then empty, as it should be.
    ioctl(fd, EVIOCGBIT(each.type, size), mask.data());
    std::array<char, 8> prefix{};
    std::snprintf(prefix.data(), prefix.size(), "B: %02x", each.type);
    writeBytes(out, prefix.data(), std::span(mask).first(size));
  }
}

void writeAxes(std::FILE* out, const libevdev* device) {
  for (unsigned code = 0; code < ABS_CNT; ++code) {
    const input_absinfo* axis = libevdev_get_abs_info(device, code);
    if (axis == nullptr) continue;
    std::fprintf(out, "A: %02x %d %d %d %d %d\n", code, axis->minimum, axis->maximum, axis->fuzz,
                 axis->flat, axis->resolution);
  }
}

void writeDescription(std::FILE* out, const libevdev* device, int fd) {
  std::fprintf(out, "# EVEMU 1.3\nN: %s\nI: %04x %04x %04x %04x\n", libevdev_get_name(device),
               libevdev_get_id_bustype(device), libevdev_get_id_vendor(device),
               libevdev_get_id_product(device), libevdev_get_id_version(device));
  writeCapabilities(out, fd);
  writeAxes(out, device);
}

/// An event as a line, with names for whoever reads the file.
void writeEvent(std::FILE* out, const input_event& event, std::int64_t microseconds) {
  std::fprintf(
      out, "E: %lld.%06lld %04x %04x %04d", static_cast<long long>(microseconds / 1'000'000),
      static_cast<long long>(microseconds % 1'000'000), event.type, event.code, event.value);
  if (event.type == EV_SYN) {
    std::fprintf(out, "\t# ------------ %s ----------\n",
                 libevdev_event_code_get_name(event.type, event.code));
    return;
  }
  const char* type = libevdev_event_type_get_name(event.type);
  const char* code = libevdev_event_code_get_name(event.type, event.code);
  std::fprintf(out, "\t# %s / %-20s %d\n", type != nullptr ? type : "?",
               code != nullptr ? code : "?", event.value);
}

void record(std::FILE* out, int fd) {
  std::int64_t first = -1;
  pollfd polled{fd, POLLIN, 0};
  while (stopped == 0) {
    if (poll(&polled, 1, -1) < 0) continue;
    std::array<input_event, 64> events{};
    const ssize_t size = read(fd, events.data(), sizeof events);
    if (size < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (size <= 0) return;
    const std::size_t count = static_cast<std::size_t>(size) / sizeof(input_event);
    for (const input_event& event : std::span(events).first(count)) {
      const std::int64_t time = event.input_event_sec * 1'000'000LL + event.input_event_usec;
      if (first < 0) first = time;
      writeEvent(out, event, time - first);
    }
  }
}

int capture(const char* node, const char* path, bool grab) {
  const Descriptor fd(open(node, O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!fd) {
    std::fprintf(stderr, "evdev_capture: %s: %s\n", node, std::strerror(errno));
    return 1;
  }
  if (grab && ioctl(fd.get(), EVIOCGRAB, 1) != 0) {
    std::fprintf(stderr, "evdev_capture: grabbing %s: %s\n", node, std::strerror(errno));
    return 1;
  }
  const File out(std::fopen(path, "w"), std::fclose);
  if (!out) {
    std::fprintf(stderr, "evdev_capture: %s: %s\n", path, std::strerror(errno));
    return 1;
  }
  libevdev* device = nullptr;
  if (const int error = libevdev_new_from_fd(fd.get(), &device); error < 0) {
    std::fprintf(stderr, "evdev_capture: %s: %s\n", node, std::strerror(-error));
    return 1;
  }
  int clock = CLOCK_MONOTONIC;
  ioctl(fd.get(), EVIOCSCLOCKID, &clock);
  writeDescription(out.get(), device, fd.get());
  libevdev_free(device);
  std::puts("recording");
  std::fflush(stdout);
  record(out.get(), fd.get());
  if (std::fflush(out.get()) != 0) {
    std::fprintf(stderr, "evdev_capture: %s: %s\n", path, std::strerror(errno));
    return 1;
  }
  return 0;
}

}  // namespace
}  // namespace velotap::vm

int main(int argc, char** argv) {
  const bool grab = argc == 4 && std::string_view(argv[1]) == "--grab";
  if (argc != 3 && !grab) {
    std::fputs("usage: evdev_capture [--grab] NODE FILE\n", stderr);
    return 2;
  }
  struct sigaction action {};
  action.sa_handler = velotap::vm::stop;
  sigaction(SIGTERM, &action, nullptr);
  return velotap::vm::capture(argv[argc - 2], argv[argc - 1], grab);
}
