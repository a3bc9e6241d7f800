// Plugs an emulated device in and unplugs it again, over and over, as fast as a program follows:
//
//   device_cycles KIND COUNT LOG
//
// The program is the one that writes LOG: a device goes once LOG has one more line with "taken
// over" and the next comes once it has one more with "given back". Every tenth device does not wait
// to be taken over: it goes as soon as the driver has finished with it, wherever the program is by
// then. Prints the number of devices that were taken over. Exit status 1 when the program does not
// follow for 20 s.
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "guest_io.hpp"
#include "uhid_device.hpp"

namespace velotap::vm {
namespace {

constexpr std::int64_t kPatience = 20 * kNanosecondsPerSecond;
constexpr int kHastyEvery = 10;

/// A file that another program appends lines to.
class Log {
 public:
  explicit Log(const char* path)
      : file_(open(path, O_RDONLY | O_CLOEXEC)), notices_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    if (!file_ || inotify_add_watch(notices_.get(), path, IN_MODIFY) < 0) {
      throw std::runtime_error(std::string("cannot follow ") + path);
    }
    readMore();
  }
  [[nodiscard]] int descriptor() const noexcept { return notices_.get(); }
  [[nodiscard]] int taken() const noexcept { return taken_; }
  [[nodiscard]] int givenBack() const noexcept { return givenBack_; }

  void readMore() {
    std::array<char, 4096> buffer{};
    while (read(notices_.get(), buffer.data(), buffer.size()) > 0) {
    }
    ssize_t size = 0;
    while ((size = read(file_.get(), buffer.data(), buffer.size())) > 0) {
      for (const char c : std::string_view(buffer.data(), static_cast<std::size_t>(size))) {
        if (c != '\n') {
          line_ += c;
          continue;
        }
        if (line_.ends_with(" taken over")) ++taken_;
        if (line_.ends_with(" given back")) ++givenBack_;
        line_.clear();
      }
    }
  }

 private:
  Descriptor file_;
  Descriptor notices_;
  std::string line_;
  int taken_ = 0;
  int givenBack_ = 0;
};

/// Serves the device, if there is one, until something is so.
template <typename Condition>
void await(Log& log, UhidDevice* device, const char* what, const Condition& condition) {
  const std::int64_t limit = monotonicNanoseconds() + kPatience;
  while (!condition()) {
    const std::int64_t left = limit - monotonicNanoseconds();
    if (left <= 0) throw std::runtime_error(std::string("not ") + what);
    std::array<pollfd, 3> polled{{{log.descriptor(), POLLIN, 0}, {-1, POLLIN, 0}, {-1, POLLIN, 0}}};
    if (device != nullptr) {
      polled[1].fd = device->descriptors()[0];
      polled[2].fd = device->descriptors()[1];
    }
    poll(polled.data(), polled.size(), static_cast<int>(left / kNanosecondsPerMillisecond) + 1);
    if (device != nullptr) device->serve();
    log.readMore();
  }
}

void cycle(const HidModel& model, int number, Log& log) {
  const int taken = log.taken();
  {
    std::array<char, 24> address{};
    std::snprintf(address.data(), address.size(), "04:4b:ec:00:%02x:%02x",
                  static_cast<unsigned>(number) >> 8U & 0xffU,
                  static_cast<unsigned>(number) & 0xffU);
    UhidDevice device(
        model, {.name = std::string(model.product), .phys = "bench/cycle", .uniq = address.data()});
    await(log, &device, "ready", [&] { return device.ready(); });
    if (number % kHastyEvery != 0) {
      await(log, &device, "taken over", [&] { return log.taken() > taken; });
    }
  }
  await(log, nullptr, "given back", [&] { return log.givenBack() >= log.taken(); });
}

int run(std::span<char*> arguments) {
  const auto kind = arguments.size() == 3 ? hidKindFromOption(arguments[0]) : std::nullopt;
  if (!kind) {
    std::fputs("usage: device_cycles KIND COUNT LOG\n", stderr);
    return 2;
  }
  Log log(arguments[2]);
  const int before = log.taken();
  const int count = std::max(0, std::atoi(arguments[1]));
  for (int i = 1; i <= count; ++i) {
    try {
      cycle(hidModel(*kind), i, log);
    } catch (const std::exception& problem) {
      std::fprintf(stderr, "device_cycles: device %d: %s\n", i, problem.what());
      return 1;
    }
  }
  std::printf("%d\n", log.taken() - before);
  return 0;
}

}  // namespace
}  // namespace velotap::vm

int main(int argc, char** argv) {
  try {
    return velotap::vm::run(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "device_cycles: %s\n", problem.what());
    return 1;
  }
}
