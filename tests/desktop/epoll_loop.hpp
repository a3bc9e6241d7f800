// The main thread of the desktop tests' programs: tasks, timers and descriptors over epoll.
//
// All of it on the thread that calls `run`, besides `async`.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "platform/clock.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class UptimeClock final : public Clock {
 public:
  [[nodiscard]] double uptime() const noexcept override;
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override {
    return std::chrono::system_clock::now();
  }
};

class EpollLoop final : public DescriptorLoop, public MainQueue {
 public:
  EpollLoop();
  ~EpollLoop() override;
  EpollLoop(const EpollLoop&) = delete;
  EpollLoop& operator=(const EpollLoop&) = delete;

  [[nodiscard]] Observation watch(int descriptor, Interest interest,
                                  std::function<void()> ready) override;
  void async(Task task) override;
  std::shared_ptr<DelayedWork> asyncAfter(double seconds, Task task) override;
  [[nodiscard]] bool isCurrent() const override { return std::this_thread::get_id() == thread_; }

  void run();
  void stop() { running_ = false; }

 private:
  struct Watch {
    std::uint64_t serial = 0;
    std::shared_ptr<std::function<void()>> ready;
  };
  class Timer;
  void runTasks();
  void runTimers();
  [[nodiscard]] int waitMilliseconds();
  void dispatch(int descriptor, std::uint64_t serial);

  const std::thread::id thread_ = std::this_thread::get_id();
  const UptimeClock clock_;
  const int epoll_;
  const int wake_;
  bool running_ = true;
  std::uint64_t serials_ = 0;
  std::map<int, Watch> watches_;
  std::multimap<double, std::shared_ptr<Timer>> timers_;
  std::mutex lock_;
  std::vector<Task> tasks_;  ///< guarded by lock_
};

}  // namespace velotap
