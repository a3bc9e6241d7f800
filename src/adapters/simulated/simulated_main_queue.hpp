// The main thread in virtual time: tasks run when the simulation lets them, timers at their own
// virtual time, always in the same order.
//
// The order: a task submitted with `async` runs as soon as whoever submitted it is done, before any
// timer. Timers run when the clock reaches them: the earliest first, those due at the same time in
// the order in which they were submitted, each followed by the tasks that it submitted.
//
// The thread that made the queue is the main thread; it alone may run the queue. `async` may be
// called from any thread. `runElsewhere` lets that one thread play another one: what runs inside
// is not on the main thread, and the queue tells it so.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

#include "adapters/simulated/simulated_clock.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class SimulatedMainQueue final : public MainQueue {
 public:
  explicit SimulatedMainQueue(SimulatedClock& clock);

  void async(Task task) override;
  std::shared_ptr<DelayedWork> asyncAfter(double seconds, Task task) override;
  [[nodiscard]] bool isCurrent() const override;

  /// Runs what is due now, and what that makes due; the clock does not move.
  void runDue() { runUntil(clock_.now()); }
  /// Moves the clock to `time`, running on the way whatever falls due, at its own time.
  void runUntil(VirtualTime time);

  /// Runs `body` at once, as though on another thread.
  void runElsewhere(const std::function<void()>& body);

 private:
  struct Timer;

  [[nodiscard]] bool takeTask(Task& task);
  void runTasks();

  SimulatedClock& clock_;
  const std::thread::id mainThread_ = std::this_thread::get_id();
  bool elsewhere_ = false;
  std::mutex lock_;
  std::deque<Task> tasks_;
  // Equal times keep the order of submission. Main thread only.
  std::multimap<VirtualTime, std::shared_ptr<Timer>> timers_;
};

}  // namespace velotap
