#include "adapters/linux/clicks/guard_process.hpp"

#include <linux/input.h>
#include <linux/uinput.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>

#include "adapters/linux/clicks/stall_judge.hpp"

namespace velotap {
namespace {

constexpr int kLookEveryMs = 125;

double now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void closeAllBut(std::array<int, 4> kept) {
  std::sort(kept.begin(), kept.end());
  unsigned next = 0;
  for (const int fd : kept) {
    if (fd < 0) continue;
    const auto keep = static_cast<unsigned>(fd);
    if (keep > next) ::close_range(next, keep - 1, 0);
    next = keep + 1;
  }
  ::close_range(next, ~0U, 0);
}

void giveBack(const WatchedFiles& watched) {
  ::ioctl(watched.node, EVIOCGRAB, nullptr);
  std::array<input_event, 2> release{};
  release[0].type = EV_KEY;
  release[0].code = BTN_MIDDLE;
  release[1].type = EV_SYN;
  release[1].code = SYN_REPORT;
  if (watched.pointer >= 0) {
    // Nothing can be done about a refusal.
    static_cast<void>(!::write(watched.pointer, release.data(), sizeof release));
  }
  ::ioctl(watched.mirror, UI_DEV_DESTROY);
}

}  // namespace

void guardProcess(const WatchedFiles& watched, const std::atomic<std::uint64_t>& served,
                  int lifeline) {
  ::setsid();  // a stop of the terminal's whole group is not for us
  ::prctl(PR_SET_NAME, "velotap-guard");
  closeAllBut({watched.node, watched.mirror, watched.pointer, lifeline});
  StallJudge judge;
  while (true) {
    std::array<pollfd, 2> both = {{{.fd = lifeline, .events = POLLIN, .revents = 0},
                                   {.fd = watched.node, .events = POLLIN, .revents = 0}}};
    if (::poll(both.data(), both.size(), -1) < 0 && errno != EINTR) ::_exit(1);
    if (both[0].revents != 0 || (both[1].revents & (POLLERR | POLLHUP)) != 0) ::_exit(0);
    // While events flow there is always one that waits: look again later instead of being woken by
    // every one of them.
    const bool waits = (both[1].revents & POLLIN) != 0;
    if (judge.observe(waits, served.load(std::memory_order_relaxed), now())) {
      giveBack(watched);
      ::_exit(0);
    }
    if (::poll(both.data(), 1, kLookEveryMs) > 0) ::_exit(0);
    pollfd node = {.fd = watched.node, .events = POLLIN, .revents = 0};
    if (::poll(&node, 1, 0) == 0) {
      static_cast<void>(judge.observe(false, served.load(std::memory_order_relaxed), now()));
    }
  }
}

}  // namespace velotap
