#include "adapters/macos/runtime/dispatch_main_queue.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velotap {
namespace {

constexpr double kNanosecondsPerSecond = 1e9;
// A year; what is longer, or no number, is as good as never and must not overflow the count.
constexpr double kLongest = 365.0 * 24 * 3600;

std::int64_t nanoseconds(double seconds) {
  if (std::isnan(seconds)) return 0;
  return std::llround(std::clamp(seconds, 0.0, kLongest) * kNanosecondsPerSecond);
}

class Delayed final : public DelayedWork {
 public:
  explicit Delayed(MainQueue::Task task) : task_(std::move(task)) {}
  /// What the task holds is let go of at once.
  void cancel() override { task_ = nullptr; }
  void run() {
    if (const MainQueue::Task task = std::exchange(task_, nullptr)) task();
  }

 private:
  MainQueue::Task task_;
};

// The system knows nothing but a pointer, so each submission owns what it points at.
void runTask(void* context) noexcept {
  const std::unique_ptr<MainQueue::Task> task(static_cast<MainQueue::Task*>(context));
  (*task)();
}

void runDelayed(void* context) noexcept {
  const std::unique_ptr<std::shared_ptr<Delayed>> work(
      static_cast<std::shared_ptr<Delayed>*>(context));
  (*work)->run();
}

}  // namespace

void DispatchMainQueue::async(Task task) {
  auto owned = std::make_unique<Task>(std::move(task));
  dispatch_.dispatch_async_f(dispatch_.dispatch_get_main_queue(), owned.release(), &runTask);
}

std::shared_ptr<DelayedWork> DispatchMainQueue::asyncAfter(double seconds, Task task) {
  auto work = std::make_shared<Delayed>(std::move(task));
  auto owned = std::make_unique<std::shared_ptr<Delayed>>(work);
  dispatch_.dispatch_after_f(dispatch_.dispatch_time(DISPATCH_TIME_NOW, nanoseconds(seconds)),
                             dispatch_.dispatch_get_main_queue(), owned.release(), &runDelayed);
  return work;
}

}  // namespace velotap
