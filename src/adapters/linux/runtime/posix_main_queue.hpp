// The main thread's loop on Linux: tasks, tasks for later, descriptors.
//
// `run` belongs to the thread that made the queue, which is the main thread from then on; `async`
// and `stop` may be called from any thread. With nothing due the loop sleeps without a time-out.
// Another event loop can serve the queue in place of `run`: `descriptor` is readable whenever
// something is due, and `runReady` carries it out. Being served inside a task (a modal window has a
// loop of its own) is allowed.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "platform/clock.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class PosixMainQueue final : public MainQueue, public DescriptorLoop {
 public:
  explicit PosixMainQueue(const Clock& clock);
  ~PosixMainQueue() override;
  PosixMainQueue(const PosixMainQueue&) = delete;
  PosixMainQueue& operator=(const PosixMainQueue&) = delete;

  void async(Task task) override;
  std::shared_ptr<DelayedWork> asyncAfter(double seconds, Task task) override;
  [[nodiscard]] bool isCurrent() const override;
  [[nodiscard]] Observation watch(int descriptor, Interest interest,
                                  std::function<void()> ready) override;

  /// Serves until `stop`.
  void run();
  /// Ends `run` after the task that is under way. Any thread.
  void stop();
  /// Serves what is ready now, and returns without waiting.
  void runReady();
  /// Readable while something is ready.
  [[nodiscard]] int descriptor() const noexcept { return epoll_.get(); }

 private:
  struct Delayed;
  struct Watch;
  struct Watches;

  void turn(int timeoutMilliseconds);
  void runTasks();
  void runDue();
  void armTimer();
  void wake() const;

  const Clock& clock_;
  std::thread::id mainThread_;
  Descriptor epoll_;
  Descriptor wake_;
  Descriptor timer_;
  std::mutex lock_;
  std::vector<Task> tasks_;
  std::deque<Task> running_;  // main thread: of this round, so that a loop inside a task goes on
  bool stopping_ = false;
  // Equal times keep the order in which they were submitted.
  std::multimap<double, std::shared_ptr<Delayed>> delayed_;
  std::shared_ptr<Watches> watches_;
};

}  // namespace velotap
