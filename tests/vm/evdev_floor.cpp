// The least that a program can do which follows the fingers of a device: one read() for each frame
// into a buffer, and a slot table. What this costs is the floor that other programs are measured
// against.
//
//   evdev_floor NODE
//
// Prints "reading" when it waits for the first frame, and how many frames and contacts it saw when
// it ends, on SIGTERM or with the device: nobody can drop the table unseen.
#include <fcntl.h>
#include <linux/input.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <span>

#include "guest_io.hpp"

namespace velotap::vm {
namespace {

volatile std::sig_atomic_t stopped = 0;
void stop(int) {
  stopped = 1;
}

struct Slot {
  int trackingId = -1;
  int x = 0;
  int y = 0;
};

struct Table {
  std::array<Slot, 16> slots{};
  std::size_t current = 0;
  long frames = 0;
  long contacts = 0;

  void apply(const input_event& event) noexcept {
    if (event.type == EV_SYN) {
      ++frames;
      for (const Slot& slot : slots) contacts += slot.trackingId >= 0 ? 1 : 0;
    } else if (event.type == EV_ABS) {
      applyAxis(event);
    }
  }

  void applyAxis(const input_event& event) noexcept {
    Slot& slot = slots[current];
    switch (event.code) {
      case ABS_MT_SLOT:
        current = static_cast<std::size_t>(event.value) % slots.size();
        break;
      case ABS_MT_TRACKING_ID:
        slot.trackingId = event.value;
        break;
      case ABS_MT_POSITION_X:
        slot.x = event.value;
        break;
      case ABS_MT_POSITION_Y:
        slot.y = event.value;
        break;
      default:
        break;
    }
  }
};

int follow(const char* node) {
  // Blocking on purpose: one system call for each frame.
  const Descriptor fd(open(node, O_RDONLY | O_CLOEXEC));
  if (!fd) {
    std::fprintf(stderr, "evdev_floor: %s: %s\n", node, std::strerror(errno));
    return 1;
  }
  std::puts("reading");
  std::fflush(stdout);
  Table table;
  std::array<input_event, 128> events;
  while (stopped == 0) {
    const ssize_t size = read(fd.get(), events.data(), sizeof events);
    if (size < 0 && errno == EINTR) continue;
    if (size <= 0) break;
    const std::size_t count = static_cast<std::size_t>(size) / sizeof(input_event);
    for (const input_event& event : std::span(events).first(count)) table.apply(event);
  }
  std::printf("frames %ld contacts %ld\n", table.frames, table.contacts);
  return 0;
}

}  // namespace
}  // namespace velotap::vm

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: evdev_floor NODE\n", stderr);
    return 2;
  }
  struct sigaction action {};
  action.sa_handler = velotap::vm::stop;
  sigaction(SIGTERM, &action, nullptr);
  return velotap::vm::follow(argv[1]);
}
