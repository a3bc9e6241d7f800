// Serves the main queue from Qt's event loop.
//
// The queue keeps its tasks, its timer and its descriptors to itself and shows Qt one descriptor
// that is readable whenever something is due. So tasks, delays and watches behave in a program with
// windows exactly as in one without, and there is one loop to test.
//
// Main thread, after the application object was made. The queue outlives this object. A modal
// dialog's loop serves the queue too, even when the dialog was opened by one of its tasks.
#pragma once

#include <QSocketNotifier>

#include "adapters/linux/runtime/posix_main_queue.hpp"

namespace velotap {

class QtMainLoop {
 public:
  explicit QtMainLoop(PosixMainQueue& queue);

 private:
  QSocketNotifier ready_;
};

}  // namespace velotap
