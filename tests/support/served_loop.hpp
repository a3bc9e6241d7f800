// The real main loop under a test: serves until something happened.
//
// Nothing waits by the clock; a limit that no machine needs only ends what would hang.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"

namespace velotap::test {

class ServedLoop {
 public:
  /// Serves until `done` holds; asked whenever `check` is called.
  void serveUntil(const std::function<bool()>& done) {
    done_ = done;
    check();
    const auto limit = queue.asyncAfter(20, [this] {
      ADD_FAILURE() << "waited in vain";
      queue.stop();
    });
    if (done_) queue.run();
    limit->cancel();
  }
  /// To be called when something happened.
  void check() {
    if (!done_ || !done_()) return;
    done_ = nullptr;
    queue.stop();
  }

  PosixClock clock;
  PosixMainQueue queue{clock};

 private:
  std::function<bool()> done_;
};

}  // namespace velotap::test
