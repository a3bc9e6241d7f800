#include "adapters/simulated/simulated_main_queue.hpp"

#include <algorithm>
#include <utility>

namespace velotap {

struct SimulatedMainQueue::Timer final : DelayedWork {
  explicit Timer(Task work) : task(std::move(work)) {}
  void cancel() override { task = nullptr; }
  Task task;
};

SimulatedMainQueue::SimulatedMainQueue(SimulatedClock& clock) : clock_(clock) {}

void SimulatedMainQueue::async(Task task) {
  const std::lock_guard guard(lock_);
  tasks_.push_back(std::move(task));
}

std::shared_ptr<DelayedWork> SimulatedMainQueue::asyncAfter(double seconds, Task task) {
  assertMainThread(*this, "asyncAfter");
  auto timer = std::make_shared<Timer>(std::move(task));
  timers_.emplace(clock_.now() + virtualTime(seconds), timer);
  return timer;
}

bool SimulatedMainQueue::isCurrent() const {
  return std::this_thread::get_id() == mainThread_ && !elsewhere_;
}

void SimulatedMainQueue::runUntil(VirtualTime time) {
  assertMainThread(*this, "runUntil");
  runTasks();
  while (!timers_.empty() && timers_.begin()->first <= time) {
    const auto first = timers_.begin();
    clock_.advanceTo(first->first);
    const auto timer = first->second;
    timers_.erase(first);
    if (const Task task = std::exchange(timer->task, nullptr)) task();
    runTasks();
  }
  clock_.advanceTo(time);
}

void SimulatedMainQueue::runElsewhere(const std::function<void()>& body) {
  const bool before = std::exchange(elsewhere_, true);
  body();
  elsewhere_ = before;
}

bool SimulatedMainQueue::takeTask(Task& task) {
  const std::lock_guard guard(lock_);
  if (tasks_.empty()) return false;
  task = std::move(tasks_.front());
  tasks_.pop_front();
  return true;
}

void SimulatedMainQueue::runTasks() {
  Task task;
  while (takeTask(task)) std::exchange(task, nullptr)();
}

}  // namespace velotap
