#include "adapters/linux/runtime/posix_main_queue.hpp"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace velotap {
namespace {

// Descriptors of the loop itself, told from watched ones by impossible numbers.
constexpr std::uint64_t kWakeToken = UINT64_MAX;
constexpr std::uint64_t kTimerToken = UINT64_MAX - 1;

int checked(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

void add(int epoll, int descriptor, std::uint64_t token) {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.u64 = token;
  checked(::epoll_ctl(epoll, EPOLL_CTL_ADD, descriptor, &event), "watch the loop's own events");
}

void drain(int descriptor) {
  std::uint64_t count = 0;
  while (::read(descriptor, &count, sizeof count) < 0 && errno == EINTR) {
  }
}

timespec absolute(double uptime) {
  const double whole = std::floor(uptime);
  return {.tv_sec = static_cast<time_t>(whole),
          .tv_nsec = static_cast<long>((uptime - whole) * 1e9)};
}

}  // namespace

struct PosixMainQueue::Delayed final : DelayedWork {
  explicit Delayed(Task t) : task(std::move(t)) {}
  void cancel() override { task = nullptr; }
  Task task;
};

struct PosixMainQueue::Watch {
  std::function<void()> ready;
};

// Outlives the queue as long as an observation refers to it. Keys are never used again, so an
// event that was fetched before its watch was withdrawn finds nobody.
struct PosixMainQueue::Watches {
  int epoll = -1;
  std::uint64_t lastKey = 0;
  std::unordered_map<std::uint64_t, std::shared_ptr<Watch>> byKey;
};

PosixMainQueue::PosixMainQueue(const Clock& clock)
    : clock_(clock),
      mainThread_(std::this_thread::get_id()),
      epoll_(checked(::epoll_create1(EPOLL_CLOEXEC), "create the main loop")),
      wake_(checked(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC), "create the main loop's wake-up")),
      timer_(checked(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC),
                     "create the main loop's timer")),
      watches_(std::make_shared<Watches>()) {
  watches_->epoll = epoll_.get();
  add(epoll_.get(), wake_.get(), kWakeToken);
  add(epoll_.get(), timer_.get(), kTimerToken);
}

PosixMainQueue::~PosixMainQueue() {
  watches_->epoll = -1;
}

void PosixMainQueue::async(Task task) {
  {
    const std::lock_guard guard(lock_);
    tasks_.push_back(std::move(task));
  }
  wake();
}

std::shared_ptr<DelayedWork> PosixMainQueue::asyncAfter(double seconds, Task task) {
  auto work = std::make_shared<Delayed>(std::move(task));
  delayed_.emplace(clock_.uptime() + std::max(seconds, 0.0), work);
  armTimer();
  return work;
}

bool PosixMainQueue::isCurrent() const {
  return std::this_thread::get_id() == mainThread_;
}

Observation PosixMainQueue::watch(int descriptor, Interest interest, std::function<void()> ready) {
  const std::uint64_t key = ++watches_->lastKey;
  epoll_event event{};
  event.events = EPOLLIN;
  if (interest == Interest::readableOrWritable) event.events |= EPOLLOUT;
  event.data.u64 = key;
  if (::epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, descriptor, &event) < 0) return {};
  watches_->byKey.emplace(key, std::make_shared<Watch>(Watch{std::move(ready)}));
  return Observation([watches = watches_, key, descriptor] {
    watches->byKey.erase(key);
    if (watches->epoll >= 0) ::epoll_ctl(watches->epoll, EPOLL_CTL_DEL, descriptor, nullptr);
  });
}

void PosixMainQueue::run() {
  while (true) {
    {
      const std::lock_guard guard(lock_);
      if (std::exchange(stopping_, false)) return;
    }
    turn(-1);
  }
}

void PosixMainQueue::stop() {
  {
    const std::lock_guard guard(lock_);
    stopping_ = true;
  }
  wake();
}

void PosixMainQueue::runReady() {
  turn(0);
}

void PosixMainQueue::turn(int timeoutMilliseconds) {
  std::array<epoll_event, 16> events;
  const int n = ::epoll_wait(epoll_.get(), events.data(), static_cast<int>(events.size()),
                             timeoutMilliseconds);
  for (int i = 0; i < n; ++i) {
    const std::uint64_t token = events[static_cast<std::size_t>(i)].data.u64;
    if (token == kWakeToken) {
      runTasks();
    } else if (token == kTimerToken) {
      drain(timer_.get());
      runDue();
    } else if (const auto found = watches_->byKey.find(token); found != watches_->byKey.end()) {
      const auto watch = found->second;  // the callback may withdraw its own watch
      watch->ready();
    }
  }
}

void PosixMainQueue::runTasks() {
  {
    const std::lock_guard guard(lock_);
    std::move(tasks_.begin(), tasks_.end(), std::back_inserter(running_));
    tasks_.clear();
  }
  while (!running_.empty()) {
    const Task task = std::move(running_.front());
    running_.pop_front();
    task();
  }
  // Only now: a loop inside one of the tasks had to be woken for those behind it.
  drain(wake_.get());
  const std::lock_guard guard(lock_);
  if (!tasks_.empty()) wake();
}

void PosixMainQueue::runDue() {
  const double now = clock_.uptime();
  while (!delayed_.empty() && delayed_.begin()->first <= now) {
    const auto work = delayed_.begin()->second;
    delayed_.erase(delayed_.begin());
    if (const Task task = std::exchange(work->task, nullptr)) task();
  }
  armTimer();
}

void PosixMainQueue::armTimer() {
  while (!delayed_.empty() && !delayed_.begin()->second->task) delayed_.erase(delayed_.begin());
  itimerspec when{};
  if (!delayed_.empty()) when.it_value = absolute(delayed_.begin()->first);
  ::timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME, &when, nullptr);
}

void PosixMainQueue::wake() const {
  const std::uint64_t one = 1;
  while (::write(wake_.get(), &one, sizeof one) < 0 && errno == EINTR) {
  }
}

}  // namespace velotap
