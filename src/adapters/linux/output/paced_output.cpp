#include "adapters/linux/output/paced_output.hpp"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <system_error>

namespace velotap {
namespace {

int checked(int fd, const char* what) {
  if (fd < 0) throw std::system_error(errno, std::generic_category(), what);
  return fd;
}

input_event event(std::uint16_t type, std::uint16_t code, std::int32_t value) {
  input_event e{};  // the kernel stamps the time itself
  e.type = type;
  e.code = code;
  e.value = value;
  return e;
}

std::array<input_event, 2> keyFrame(std::uint16_t code, bool down) {
  return {event(EV_KEY, code, down ? 1 : 0), event(EV_SYN, SYN_REPORT, 0)};
}

}  // namespace

PacedOutput::PacedOutput(VirtualDevice& device, const Clock& clock, Report report)
    : device_(device),
      clock_(clock),
      report_(report),
      timer_(checked(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC),
                     "create the output's timer")),
      wake_(checked(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC), "create the output's wake-up")) {
  {
    // The desktop needs a while to take a new device up, so it is there before the first click.
    const std::lock_guard guard(lock_);
    if (const int error = device_.open(); error != 0) {
      report_("cannot create the virtual pointer", error);
      reported_ = true;
    }
  }
  thread_ = std::thread([this] { run(); });
}

PacedOutput::~PacedOutput() {
  stopping_ = true;
  wake();
  thread_.join();
  const std::lock_guard guard(lock_);
  pacer_.clear();
  if (pacer_.isDown()) emitKeyLocked(BTN_MIDDLE, false);
  device_.close();
}

void PacedOutput::postMiddle(ClickPacer::Change change) {
  const std::lock_guard guard(lock_);
  if (!pacer_.submit(change)) return;
  flushDueLocked();
}

void PacedOutput::postChord(const KeyChord& chord, bool down) {
  const std::lock_guard guard(lock_);
  if (down) {
    for (const std::uint16_t modifier : chord.modifiers) emitKeyLocked(modifier, true);
    emitKeyLocked(chord.key, true);
    return;
  }
  // Everything is released even when a write fails: releasing what is not down is harmless.
  emitKeyLocked(chord.key, false);
  for (std::size_t i = chord.modifiers.size(); i > 0; --i) {
    emitKeyLocked(chord.modifiers[i - 1], false);
  }
}

bool PacedOutput::postFrame(std::span<const input_event> frame) {
  const std::lock_guard guard(lock_);
  return emitLocked(frame);
}

void PacedOutput::flushDueLocked() {
  while (const auto change = pacer_.takeDue(clock_.uptime())) {
    emitKeyLocked(BTN_MIDDLE, *change == ClickPacer::Change::press);
    pacer_.wrote(*change, clock_.uptime());
  }
  armLocked();
}

void PacedOutput::armLocked() {
  const std::optional<double> due = pacer_.nextDue();
  if (due == armedFor_) return;
  armedFor_ = due;
  itimerspec when{};
  if (due) {
    const double whole = std::floor(*due);
    // Rounded up: a timer that fires before the time has come would only have to be set again.
    when.it_value = {.tv_sec = static_cast<time_t>(whole),
                     .tv_nsec = static_cast<long>(std::ceil((*due - whole) * 1e9))};
    if (when.it_value.tv_nsec >= 1'000'000'000) when.it_value = {when.it_value.tv_sec + 1, 0};
  }
  ::timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME, &when, nullptr);
}

bool PacedOutput::emitKeyLocked(std::uint16_t code, bool down) {
  return emitLocked(keyFrame(code, down));
}

bool PacedOutput::emitLocked(std::span<const input_event> frame) {
  const int error = device_.open();
  const bool written = error == 0 && device_.emit(frame);
  if (!written && !reported_) {
    report_(error != 0 ? "cannot create the virtual pointer" : "the virtual pointer was lost",
            error);
  }
  reported_ = !written;
  return written;
}

void PacedOutput::run() {
  std::array<pollfd, 2> waiting = {{{.fd = timer_.get(), .events = POLLIN, .revents = 0},
                                    {.fd = wake_.get(), .events = POLLIN, .revents = 0}}};
  while (!stopping_) {
    if (::poll(waiting.data(), waiting.size(), -1) < 0) continue;
    std::uint64_t expirations = 0;
    if (::read(timer_.get(), &expirations, sizeof expirations) <= 0) continue;
    const std::lock_guard guard(lock_);
    armedFor_.reset();
    flushDueLocked();
  }
}

void PacedOutput::wake() const {
  const std::uint64_t one = 1;
  while (::write(wake_.get(), &one, sizeof one) < 0 && errno == EINTR) {
  }
}

}  // namespace velotap
