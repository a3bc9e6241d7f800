#include "adapters/linux/gesture/gesture_touchpad.hpp"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <optional>
#include <system_error>
#include <utility>

namespace velotap {
namespace {

timespec toTimespec(double seconds) {
  const double whole = std::floor(seconds);
  return {.tv_sec = static_cast<time_t>(whole),
          .tv_nsec = static_cast<long>((seconds - whole) * 1e9)};
}

}  // namespace

GestureTouchpad::GestureTouchpad(PadDevice& pad, GestureWays ways, const Clock& clock,
                                 DiagnosticLog& log)
    : pad_(pad), ways_(std::move(ways)), clock_(clock), log_(log) {
  wakeDescriptor_ = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
  if (wakeDescriptor_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
  thread_ = std::thread([this] { run(); });
}

GestureTouchpad::~GestureTouchpad() {
  stopping_.store(true);
  wake();
  thread_.join();
  ::close(wakeDescriptor_);
}

void GestureTouchpad::post(const GestureEvent& event) noexcept {
  if (!notes_.push({.kind = event.kind, .phase = event.phase, .value = event.value})) {
    lost_.store(true);
  }
  wake();
}

void GestureTouchpad::prepare() noexcept {
  preparing_.store(true);
  wake();
}

void GestureTouchpad::wake() noexcept {
  // Full means that the thread is being woken already.
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = ::write(wakeDescriptor_, &one, sizeof one);
}

void GestureTouchpad::run() {
  GestureOutput output(pad_, ways_, log_);
  while (!stopping_.load()) {
    sleepUntilNeeded(output);
    takeNotes(output);
    output.turn(clock_.uptime());
  }
}

void GestureTouchpad::takeNotes(GestureOutput& output) {
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t size = ::read(wakeDescriptor_, &count, sizeof count);
  const double now = clock_.uptime();
  if (preparing_.exchange(false)) output.prepare(now);
  while (const auto note = notes_.pop()) output.handle(*note, now);
  if (lost_.exchange(false)) output.cancel(now);
}

void GestureTouchpad::sleepUntilNeeded(const GestureOutput& output) const {
  std::array<pollfd, 2> watched = {
      pollfd{.fd = wakeDescriptor_, .events = POLLIN, .revents = 0},
      pollfd{.fd = pad_.wakeDescriptor(), .events = POLLIN, .revents = 0}};
  std::optional<timespec> wait;
  if (const auto deadline = output.deadline()) {
    wait = toTimespec(std::max(0.0, *deadline - clock_.uptime()));
  }
  // An interruption is as good as a wake-up: the loop looks at everything again.
  (void)ppoll(watched.data(), watched.size(), wait ? &*wait : nullptr, nullptr);
}

}  // namespace velotap
