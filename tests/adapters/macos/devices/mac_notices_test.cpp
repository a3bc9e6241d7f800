#include "adapters/macos/devices/mac_notices.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_cocoa.hpp"
#include "fakes/fake_io_kit.hpp"
#include "fakes/fake_quartz.hpp"

namespace velotap::test {
namespace {

class MacNoticesTest : public ::testing::Test {
 protected:
  SystemNotices::DeviceWatch watch() {
    return notices_.watchDevices([this] { ++attached_; }, [this] { ++detached_; });
  }

  FakeCoreFoundation cf_;
  FakeIoKit ioKit_{cf_};
  FakeQuartz quartz_{cf_};
  FakeWorkspace workspace_;
  MacNotices notices_{cf_.api(), ioKit_.api(), quartz_.api(), workspace_};
  int attached_ = 0;
  int detached_ = 0;
};

TEST_F(MacNoticesTest, devicesThatArePresentAreNotReported) {
  ioKit_.present = 3;
  const auto watching = watch();
  EXPECT_FALSE(watching.portFailed);
  EXPECT_EQ(watching.attachError, std::nullopt);
  EXPECT_EQ(watching.detachError, std::nullopt);
  EXPECT_EQ(attached_ + detached_, 0);
  EXPECT_EQ(ioKit_.classes, (std::vector<std::string>(2, "AppleMultitouchDevice")));
}

TEST_F(MacNoticesTest, everyChangeIsReportedOnceHoweverManyDevicesItHas) {
  const auto watching = watch();
  ioKit_.happen(kIOFirstMatchNotification, 2);
  EXPECT_EQ(attached_, 1);
  ioKit_.happen(kIOFirstMatchNotification, 1);
  EXPECT_EQ(attached_, 2);
  EXPECT_EQ(detached_, 0);
  ioKit_.happen(kIOTerminatedNotification, 1);
  ioKit_.happen(kIOTerminatedNotification, 1);
  EXPECT_EQ(detached_, 2);
}

TEST_F(MacNoticesTest, withoutAPortNothingIsWatched) {
  ioKit_.portFails = true;
  const auto watching = watch();
  EXPECT_TRUE(watching.portFailed);
  EXPECT_FALSE(watching.observation.active());
  EXPECT_TRUE(ioKit_.classes.empty());
}

TEST_F(MacNoticesTest, aFailedWatchCostsOnlyItsOwnNotices) {
  ioKit_.addFails[kIOFirstMatchNotification] = -536870206;
  const auto watching = watch();
  EXPECT_EQ(watching.attachError, -536870206);
  EXPECT_EQ(watching.detachError, std::nullopt);
  ioKit_.happen(kIOTerminatedNotification, 1);
  EXPECT_EQ(detached_, 1);
}

TEST_F(MacNoticesTest, theOtherWatchMayFailAsWell) {
  ioKit_.addFails[kIOTerminatedNotification] = 5;
  const auto watching = watch();
  EXPECT_EQ(watching.attachError, std::nullopt);
  EXPECT_EQ(watching.detachError, 5);
  ioKit_.happen(kIOFirstMatchNotification, 1);
  EXPECT_EQ(attached_, 1);
}

TEST_F(MacNoticesTest, noMemoryForTheMatchingIsAnErrorNotACrash) {
  ioKit_.matchingFails = true;
  const auto watching = watch();
  EXPECT_EQ(watching.attachError, kIOReturnNoMemory);
  EXPECT_EQ(watching.detachError, kIOReturnNoMemory);
  EXPECT_EQ(ioKit_.notifications(), 0U);
}

TEST_F(MacNoticesTest, aWatchMayEndItselfWhileItIsTold) {
  SystemNotices::DeviceWatch watching;
  watching = notices_.watchDevices(
      [&] {
        ++attached_;
        watching.observation.reset();
      },
      [] {});
  ioKit_.happen(kIOFirstMatchNotification, 1);
  ioKit_.happen(kIOFirstMatchNotification, 1);
  EXPECT_EQ(attached_, 1);
  EXPECT_TRUE(cf_.loopSources.empty());
}

TEST_F(MacNoticesTest, sleepAndWakeAreToldUntilTheObservationEnds) {
  int sleeps = 0;
  int wakes = 0;
  Observation watching = notices_.watchSleep([&] { ++sleeps; }, [&] { ++wakes; });
  workspace_.tell(WorkspaceNotice::willSleep);
  EXPECT_EQ(sleeps, 1);
  EXPECT_EQ(wakes, 0);
  workspace_.tell(WorkspaceNotice::didWake);
  EXPECT_EQ(wakes, 1);
  watching.reset();
  workspace_.tell(WorkspaceNotice::willSleep);
  workspace_.tell(WorkspaceNotice::didWake);
  EXPECT_EQ(sleeps + wakes, 2);
}

// The beginning of a reconfiguration counts as much as its end.
TEST_F(MacNoticesTest, everyDisplayCallbackIsToldWhateverItsFlags) {
  int told = 0;
  Observation watching = notices_.watchDisplays([&] { ++told; });
  quartz_.reconfigure(1);
  quartz_.reconfigure(1U << 4);
  EXPECT_EQ(told, 2);
  watching.reset();
  quartz_.reconfigure(1);
  EXPECT_EQ(told, 2);
}

TEST_F(MacNoticesTest, displaysThatCannotBeWatchedAreNotRemovedEither) {
  quartz_.refuseDisplays = true;
  const Observation watching = notices_.watchDisplays([] {});
  EXPECT_FALSE(watching.active());
}

TEST_F(MacNoticesTest, aDisplayWatchMayEndItselfWhileItIsTold) {
  int told = 0;
  Observation watching;
  watching = notices_.watchDisplays([&] {
    ++told;
    watching.reset();
  });
  quartz_.reconfigure(0);
  quartz_.reconfigure(0);
  EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace velotap::test
