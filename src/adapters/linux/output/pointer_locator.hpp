// Where the pointer is, as far as anybody tells: the X server does; under Wayland a program hears
// of the pointer over its own windows only, so there whoever has windows says so.
//
// `location` may be called from any thread and waits for its answer at most a few milliseconds. It
// never connects, because connecting to a server that hangs would hang the caller: that is left to
// the main thread, which tries again at most every ten seconds and only when somebody asks. A
// server that died, or does not answer, means that the location is unknown. Never ends the process.
#pragma once

#include <memory>
#include <optional>

#include "base/point.hpp"
#include "platform/clock.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class PointerLocator {
 public:
  /// Connects at once where there is an X session, so that the first question is as quick as any.
  /// Main thread.
  PointerLocator(const Clock& clock, MainQueue& mainQueue);
  ~PointerLocator();
  PointerLocator(const PointerLocator&) = delete;
  PointerLocator& operator=(const PointerLocator&) = delete;

  [[nodiscard]] std::optional<Point> location();
  /// What the program's own windows know, in their coordinates; nothing while the pointer is over
  /// none of them. Counts where no X server is asked. Any thread.
  void tell(std::optional<Point> overOwnWindow);

 private:
  struct State;
  const Clock& clock_;
  MainQueue& mainQueue_;
  std::shared_ptr<State> state_;  ///< an attempt that is queued may outlive the locator
};

}  // namespace velotap
