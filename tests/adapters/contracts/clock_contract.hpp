// What every Clock promises, whoever keeps the time.
#pragma once

#include <gtest/gtest.h>

#include "platform/clock.hpp"

namespace velotap::test {

class ClockWorld {
 public:
  virtual ~ClockWorld() = default;
  [[nodiscard]] virtual Clock& clock() = 0;
  /// Returns when some time has passed, as little as it may be.
  virtual void pass() = 0;
};

template <typename World>
class ClockContract : public ::testing::Test {
 protected:
  World world_;
  Clock& clock_ = world_.clock();
};

TYPED_TEST_SUITE_P(ClockContract);

TYPED_TEST_P(ClockContract, uptimeGoesOnAndNeverBack) {
  double before = this->clock_.uptime();
  EXPECT_GT(before, 0);
  for (int i = 0; i < 100; ++i) {
    const double now = this->clock_.uptime();
    EXPECT_GE(now, before);
    this->world_.pass();
    before = this->clock_.uptime();
    EXPECT_GT(before, now);
  }
}

TYPED_TEST_P(ClockContract, datesAreOfOurTimeAndGoOnToo) {
  const auto before = this->clock_.date();
  EXPECT_GE(before, std::chrono::system_clock::time_point(std::chrono::seconds(1704067200)));
  this->world_.pass();
  EXPECT_GT(this->clock_.date(), before);
}

REGISTER_TYPED_TEST_SUITE_P(ClockContract, uptimeGoesOnAndNeverBack, datesAreOfOurTimeAndGoOnToo);

}  // namespace velotap::test
