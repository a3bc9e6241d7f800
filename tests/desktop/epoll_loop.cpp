#include "epoll_loop.hpp"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>

namespace velotap {

double UptimeClock::uptime() const noexcept {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

class EpollLoop::Timer final : public DelayedWork {
 public:
  explicit Timer(Task task) : task_(std::move(task)) {}
  void cancel() override { task_ = nullptr; }
  void fire() {
    if (const Task task = std::exchange(task_, nullptr)) task();
  }
  [[nodiscard]] bool cancelled() const noexcept { return task_ == nullptr; }

 private:
  Task task_;
};

EpollLoop::EpollLoop()
    : epoll_(epoll_create1(EPOLL_CLOEXEC)), wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
  epoll_event event{.events = EPOLLIN, .data = {.u64 = static_cast<std::uint32_t>(wake_)}};
  epoll_ctl(epoll_, EPOLL_CTL_ADD, wake_, &event);
}

EpollLoop::~EpollLoop() {
  close(wake_);
  close(epoll_);
}

// A descriptor's number is used again as soon as it is closed, so an event carries a serial number
// beside it: one that was fetched for an earlier watch finds its number outdated.
Observation EpollLoop::watch(int descriptor, Interest interest, std::function<void()> ready) {
  const std::uint64_t serial = ++serials_ & 0xFFFFFFFFU;
  const auto events = EPOLLIN | (interest == Interest::readableOrWritable ? EPOLLOUT : 0U);
  epoll_event event{.events = events,
                    .data = {.u64 = serial << 32U | static_cast<std::uint32_t>(descriptor)}};
  if (epoll_ctl(epoll_, EPOLL_CTL_ADD, descriptor, &event) != 0) return {};
  watches_[descriptor] = {serial, std::make_shared<std::function<void()>>(std::move(ready))};
  return Observation([this, descriptor, serial] {
    const auto found = watches_.find(descriptor);
    if (found == watches_.end() || found->second.serial != serial) return;
    watches_.erase(found);
    epoll_ctl(epoll_, EPOLL_CTL_DEL, descriptor, nullptr);
  });
}

void EpollLoop::async(Task task) {
  {
    const std::lock_guard guard(lock_);
    tasks_.push_back(std::move(task));
  }
  const std::uint64_t one = 1;
  if (write(wake_, &one, sizeof one) < 0) return;  // full: the loop is awake anyway
}

std::shared_ptr<DelayedWork> EpollLoop::asyncAfter(double seconds, Task task) {
  auto timer = std::make_shared<Timer>(std::move(task));
  timers_.emplace(clock_.uptime() + seconds, timer);
  return timer;
}

void EpollLoop::runTasks() {
  std::vector<Task> tasks;
  {
    const std::lock_guard guard(lock_);
    tasks.swap(tasks_);
  }
  for (const Task& task : tasks) task();
}

void EpollLoop::runTimers() {
  const double now = clock_.uptime();
  while (running_ && !timers_.empty() && timers_.begin()->first <= now) {
    const auto timer = timers_.begin()->second;
    timers_.erase(timers_.begin());
    timer->fire();
  }
}

int EpollLoop::waitMilliseconds() {
  while (!timers_.empty() && timers_.begin()->second->cancelled()) timers_.erase(timers_.begin());
  if (timers_.empty()) return -1;
  const double left = timers_.begin()->first - clock_.uptime();
  return static_cast<int>(std::clamp(std::ceil(1000 * left), 0.0, 1e6));
}

void EpollLoop::dispatch(int descriptor, std::uint64_t serial) {
  const auto found = watches_.find(descriptor);
  if (found == watches_.end() || found->second.serial != serial) return;
  const auto ready = found->second.ready;
  (*ready)();
}

void EpollLoop::run() {
  std::array<epoll_event, 16> events{};
  while (running_) {
    const int count = epoll_wait(epoll_, events.data(), events.size(), waitMilliseconds());
    for (int i = 0; i < count && running_; ++i) {
      const std::uint64_t data = events[static_cast<std::size_t>(i)].data.u64;
      const int descriptor = static_cast<int>(data & 0xFFFFFFFFU);
      if (descriptor == wake_) {
        std::uint64_t counter = 0;
        if (read(wake_, &counter, sizeof counter) < 0) continue;
      } else {
        dispatch(descriptor, data >> 32U);
      }
    }
    runTimers();
    runTasks();
  }
}

}  // namespace velotap
