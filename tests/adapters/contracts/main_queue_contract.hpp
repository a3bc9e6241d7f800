// What every MainQueue promises, whatever loop serves it.
//
// A world makes one queue on the test's thread and can let time pass.
#pragma once

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "platform/main_queue.hpp"

namespace velotap::test {

class MainQueueWorld {
 public:
  virtual ~MainQueueWorld() = default;
  [[nodiscard]] virtual MainQueue& queue() = 0;
  /// Runs what is ready now.
  virtual void runReady() = 0;
  /// Lets at least that much time pass and runs what falls due meanwhile.
  virtual void advance(double seconds) = 0;
};

template <typename World>
class MainQueueContract : public ::testing::Test {
 protected:
  World world_;
  MainQueue& queue_ = world_.queue();
  std::vector<int> ran_;
};

TYPED_TEST_SUITE_P(MainQueueContract);

TYPED_TEST_P(MainQueueContract, tasksRunLaterAndInTheirOrder) {
  this->queue_.async([this] { this->ran_.push_back(1); });
  this->queue_.async([this] { this->ran_.push_back(2); });
  EXPECT_TRUE(this->ran_.empty());
  this->world_.runReady();
  EXPECT_EQ(this->ran_, (std::vector{1, 2}));
}

TYPED_TEST_P(MainQueueContract, aTaskMaySubmitAnother) {
  this->queue_.async([this] {
    this->queue_.async([this] { this->ran_.push_back(2); });
    this->ran_.push_back(1);
  });
  this->world_.runReady();
  this->world_.runReady();
  EXPECT_EQ(this->ran_, (std::vector{1, 2}));
}

TYPED_TEST_P(MainQueueContract, anyThreadMaySubmitAndTheMainOneRuns) {
  bool there = true;
  std::thread thread([&] {
    there = this->queue_.isCurrent();
    this->queue_.async([this] { this->ran_.push_back(this->queue_.isCurrent() ? 1 : 0); });
  });
  thread.join();
  EXPECT_FALSE(there);
  EXPECT_TRUE(this->queue_.isCurrent());
  this->world_.runReady();
  EXPECT_EQ(this->ran_, std::vector{1});
}

TYPED_TEST_P(MainQueueContract, delaysDecideTheOrder) {
  static_cast<void>(this->queue_.asyncAfter(0.02, [this] { this->ran_.push_back(2); }));
  static_cast<void>(this->queue_.asyncAfter(0.01, [this] { this->ran_.push_back(1); }));
  this->world_.runReady();
  EXPECT_TRUE(this->ran_.empty());
  this->world_.advance(0.03);
  EXPECT_EQ(this->ran_, (std::vector{1, 2}));
}

TYPED_TEST_P(MainQueueContract, droppingTheResultDoesNotCancelAndCancellingDoes) {
  static_cast<void>(this->queue_.asyncAfter(0.01, [this] { this->ran_.push_back(1); }));
  const auto cancelled = this->queue_.asyncAfter(0.01, [this] { this->ran_.push_back(2); });
  cancelled->cancel();
  cancelled->cancel();
  this->world_.advance(0.02);
  EXPECT_EQ(this->ran_, std::vector{1});
}

TYPED_TEST_P(MainQueueContract, cancellingAfterwardsOrFromWithinIsHarmless) {
  std::shared_ptr<DelayedWork> work;
  work = this->queue_.asyncAfter(0.01, [&] {
    work->cancel();
    this->ran_.push_back(1);
  });
  this->world_.advance(0.02);
  work->cancel();
  this->world_.advance(0.02);
  EXPECT_EQ(this->ran_, std::vector{1});
}

TYPED_TEST_P(MainQueueContract, oneDelayedTaskMayCancelTheNext) {
  std::shared_ptr<DelayedWork> second;
  static_cast<void>(this->queue_.asyncAfter(0.01, [&] {
    this->ran_.push_back(1);
    second->cancel();
  }));
  second = this->queue_.asyncAfter(0.02, [this] { this->ran_.push_back(2); });
  this->world_.advance(0.03);
  EXPECT_EQ(this->ran_, std::vector{1});
}

REGISTER_TYPED_TEST_SUITE_P(MainQueueContract, tasksRunLaterAndInTheirOrder, aTaskMaySubmitAnother,
                            anyThreadMaySubmitAndTheMainOneRuns, delaysDecideTheOrder,
                            droppingTheResultDoesNotCancelAndCancellingDoes,
                            cancellingAfterwardsOrFromWithinIsHarmless,
                            oneDelayedTaskMayCancelTheNext);

}  // namespace velotap::test
