// A clock that tests set and a main queue whose tasks run when the clock reaches them.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "platform/clock.hpp"
#include "platform/main_queue.hpp"

namespace velotap::test {

/// Any thread.
class ManualClock final : public Clock {
 public:
  [[nodiscard]] double uptime() const noexcept override { return now_; }
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override {
    using namespace std::chrono;
    return system_clock::time_point(duration_cast<system_clock::duration>(duration<double>(now_)));
  }
  void set(double now) { now_ = now; }
  void advance(double seconds) { now_ = now_ + seconds; }

 private:
  std::atomic<double> now_{1000.0};
};

/// The thread that made it is the main thread. `async` from any thread; the rest on the main one.
class VirtualQueue final : public MainQueue {
 public:
  explicit VirtualQueue(ManualClock& clock) : clock_(clock) {}

  void async(Task task) override { submit(clock_.uptime(), std::move(task)); }
  std::shared_ptr<DelayedWork> asyncAfter(double seconds, Task task) override {
    return submit(clock_.uptime() + seconds, std::move(task));
  }
  [[nodiscard]] bool isCurrent() const override { return std::this_thread::get_id() == main_; }

  /// Runs what is due now, in order, including what that submits for now.
  void runDue() {
    while (auto work = takeDue(clock_.uptime())) (*work)();
  }
  /// Lets time pass; every task runs at its own time.
  void advance(double seconds) {
    const double end = clock_.uptime() + seconds;
    runDue();
    while (const auto next = nextDue(end)) {
      clock_.set(*next);
      runDue();
    }
    clock_.set(end);
    runDue();
  }
  [[nodiscard]] std::size_t pending() const {
    const std::lock_guard guard(lock_);
    return tasks_.size();
  }

 private:
  using Key = std::pair<double, std::uint64_t>;  // due time, then order of submission
  struct Work final : DelayedWork {
    Work(VirtualQueue& o, Key k) : owner(o), key(k) {}
    void cancel() override {
      const std::lock_guard guard(owner.lock_);
      owner.tasks_.erase(key);
    }
    VirtualQueue& owner;
    Key key;
  };

  std::shared_ptr<Work> submit(double due, Task task) {
    const std::lock_guard guard(lock_);
    const Key key{due, serial_++};
    tasks_.emplace(key, std::move(task));
    return std::make_shared<Work>(*this, key);
  }
  std::optional<Task> takeDue(double now) {
    const std::lock_guard guard(lock_);
    if (tasks_.empty() || tasks_.begin()->first.first > now) return std::nullopt;
    Task task = std::move(tasks_.begin()->second);
    tasks_.erase(tasks_.begin());
    return task;
  }
  std::optional<double> nextDue(double end) const {
    const std::lock_guard guard(lock_);
    if (tasks_.empty() || tasks_.begin()->first.first > end) return std::nullopt;
    return tasks_.begin()->first.first;
  }

  ManualClock& clock_;
  const std::thread::id main_ = std::this_thread::get_id();
  mutable std::mutex lock_;
  std::map<Key, Task> tasks_;
  std::uint64_t serial_ = 0;
};

}  // namespace velotap::test
