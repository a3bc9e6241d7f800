// What every SystemNotices promises that may fail to watch devices: each failure costs only its own
// notices, and is told.
#pragma once

#include "notices_contract.hpp"

namespace velotap::test {

/// A world in which watching devices may fail.
class FailingNoticesWorld : public NoticesWorld {
 public:
  virtual void failPort() = 0;
  virtual void failAttach(int error) = 0;
  virtual void failDetach(int error) = 0;
};

template <typename World>
class FailingNoticesContract : public NoticesContract<World> {};

TYPED_TEST_SUITE_P(FailingNoticesContract);

TYPED_TEST_P(FailingNoticesContract, withoutAPortNothingIsWatched) {
  this->world_.failPort();
  EXPECT_TRUE(this->watchDevices().portFailed);
}

TYPED_TEST_P(FailingNoticesContract, oneWatchThatFailsLeavesTheOther) {
  this->world_.failAttach(5);
  auto watch = this->watchDevices();
  EXPECT_EQ(watch.attachError, 5);
  EXPECT_FALSE(watch.detachError);
  this->world_.detach();
  EXPECT_EQ(this->detached_, 1);
  EXPECT_EQ(this->attached_, 0);
}

TYPED_TEST_P(FailingNoticesContract, theOtherWatchFailsOnItsOwnToo) {
  this->world_.failDetach(6);
  auto watch = this->watchDevices();
  EXPECT_EQ(watch.detachError, 6);
  this->world_.attach();
  EXPECT_EQ(this->attached_, 1);
}

REGISTER_TYPED_TEST_SUITE_P(FailingNoticesContract, withoutAPortNothingIsWatched,
                            oneWatchThatFailsLeavesTheOther, theOtherWatchFailsOnItsOwnToo);

}  // namespace velotap::test
