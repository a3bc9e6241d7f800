#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "main_queue_contract.hpp"

namespace velotap::test {
namespace {

class PosixQueueWorld final : public MainQueueWorld {
 public:
  MainQueue& queue() override { return queue_; }
  void runReady() override { queue_.runReady(); }
  /// Waits for the queue's own timer.
  void advance(double seconds) override {
    static_cast<void>(queue_.asyncAfter(seconds, [this] { queue_.stop(); }));
    queue_.run();
  }

 private:
  PosixClock clock_;
  PosixMainQueue queue_{clock_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, MainQueueContract, PosixQueueWorld);

}  // namespace
}  // namespace velotap::test
