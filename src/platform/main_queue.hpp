// The port for the main thread: the one thread on which windows, menus, the controller and the
// event-tap callbacks run.
#pragma once

#include <functional>
#include <memory>

namespace velotap {

/// A task that was submitted for later and may be cancelled until it starts.
class DelayedWork {
 public:
  virtual ~DelayedWork() = default;
  /// Main thread only. Once it returns the task will not start.
  virtual void cancel() = 0;
};

class MainQueue {
 public:
  using Task = std::function<void()>;
  virtual ~MainQueue() = default;
  /// Any thread. Tasks run on the main thread in the order they were submitted.
  virtual void async(Task task) = 0;
  /// Main thread only. Dropping the result does not cancel the task.
  virtual std::shared_ptr<DelayedWork> asyncAfter(double seconds, Task task) = 0;
  [[nodiscard]] virtual bool isCurrent() const = 0;
};

/// Ends the process, naming `where`, when called on another thread than the main one. A rewritten
/// event on the wrong thread is a corrupted event stream, so this holds in release builds too.
void assertMainThread(const MainQueue& queue, const char* where);

}  // namespace velotap
