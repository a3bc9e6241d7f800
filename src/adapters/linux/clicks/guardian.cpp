#include "adapters/linux/clicks/guardian.hpp"

#include <fcntl.h>
#include <linux/input.h>
#include <linux/uinput.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <new>

#include "adapters/linux/clicks/stall_judge.hpp"

namespace velotap {
namespace {

using Counter = std::atomic<std::uint64_t>;
static_assert(Counter::is_always_lock_free);

constexpr int kLookEveryMs = 125;

double now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// From here on the child's code: a copy of one thread of a process with several, so it may call the
// system and nothing else.

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

void giveBack(const Guardian::Watched& watched) {
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

[[noreturn]] void watch(const Guardian::Watched& watched, const Counter& served, int lifeline) {
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

}  // namespace

Guardian::Guardian() {
  void* page =
      ::mmap(nullptr, sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (page != MAP_FAILED) served_ = new (page) Counter(0);
}

Guardian::~Guardian() {
  stop();
  if (served_ != nullptr) ::munmap(served_, sizeof(Counter));
}

bool Guardian::start(const Watched& watched) {
  stop();
  std::array<int, 2> pipe{};
  if (served_ == nullptr || ::pipe2(pipe.data(), O_CLOEXEC) != 0) return false;
  Descriptor childsEnd(pipe[0]);
  lifeline_ = Descriptor(pipe[1]);
  child_ = ::fork();
  if (child_ == 0) watch(watched, *served_, childsEnd.get());
  if (child_ < 0) lifeline_.reset();
  return child_ > 0;
}

void Guardian::stop() {
  lifeline_.reset();
  if (child_ <= 0) return;
  while (::waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
  }
  child_ = -1;
}

}  // namespace velotap
