// What every SystemNotices promises, whoever notices.
#pragma once

#include <gtest/gtest.h>

#include "platform/system_notices.hpp"

namespace velotap::test {

class NoticesWorld {
 public:
  virtual ~NoticesWorld() = default;
  [[nodiscard]] virtual SystemNotices& notices() = 0;
  virtual void attach() = 0;
  virtual void detach() = 0;
  virtual void fallAsleep() = 0;
  virtual void wakeUp() = 0;
  /// Everybody has heard of it when this returns, as of all of the above.
  virtual void reconfigureDisplays() = 0;
};

template <typename World>
class NoticesContract : public ::testing::Test {
 protected:
  SystemNotices::DeviceWatch watchDevices() {
    return world_.notices().watchDevices([this] { ++attached_; }, [this] { ++detached_; });
  }
  World world_;
  int attached_ = 0;
  int detached_ = 0;
};

TYPED_TEST_SUITE_P(NoticesContract);

TYPED_TEST_P(NoticesContract, devicesAreToldAsTheyComeAndGo) {
  auto watch = this->watchDevices();
  EXPECT_FALSE(watch.portFailed || watch.attachError || watch.detachError);
  EXPECT_EQ(this->attached_ + this->detached_, 0);
  this->world_.attach();
  this->world_.attach();
  this->world_.detach();
  EXPECT_EQ(this->attached_, 2);
  EXPECT_EQ(this->detached_, 1);
  watch.observation.reset();
  this->world_.attach();
  this->world_.detach();
  EXPECT_EQ(this->attached_ + this->detached_, 3);
}

TYPED_TEST_P(NoticesContract, sleepAndWakeAreTold) {
  int sleeps = 0;
  int wakes = 0;
  Observation watching = this->world_.notices().watchSleep([&] { ++sleeps; }, [&] { ++wakes; });
  this->world_.fallAsleep();
  EXPECT_EQ(sleeps, 1);
  EXPECT_EQ(wakes, 0);
  this->world_.wakeUp();
  EXPECT_EQ(wakes, 1);
  watching.reset();
  this->world_.fallAsleep();
  this->world_.wakeUp();
  EXPECT_EQ(sleeps + wakes, 2);
}

// How often one change is told is the system's matter.
TYPED_TEST_P(NoticesContract, displaysAreToldEachTime) {
  int told = 0;
  Observation watching = this->world_.notices().watchDisplays([&] { ++told; });
  this->world_.reconfigureDisplays();
  const int first = told;
  EXPECT_GE(first, 1);
  this->world_.reconfigureDisplays();
  EXPECT_GT(told, first);
  const int both = told;
  watching.reset();
  this->world_.reconfigureDisplays();
  EXPECT_EQ(told, both);
}

REGISTER_TYPED_TEST_SUITE_P(NoticesContract, devicesAreToldAsTheyComeAndGo, sleepAndWakeAreTold,
                            displaysAreToldEachTime);

}  // namespace velotap::test
