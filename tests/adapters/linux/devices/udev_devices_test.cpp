// What udev_devices does where no device comes or goes; arrivals and departures are played in the
// virtual machine, where there is a udev to tell of them.

#include "adapters/linux/devices/udev_devices.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace velotap {
namespace {

class FakeLoop final : public DescriptorLoop {
 public:
  Observation watch(int descriptor, Interest, std::function<void()> callback) override {
    if (refusing) return {};
    EXPECT_GE(descriptor, 0);
    ready = std::move(callback);
    return Observation([this] { ready = nullptr; });
  }
  bool refusing = false;
  std::function<void()> ready;
};

class UdevNoticesTest : public testing::Test {
 protected:
  SystemNotices::DeviceWatch watch() {
    return notices.watchDevices([this] { ++calls; }, [this] { ++calls; });
  }
  FakeLoop loop;
  UdevNotices notices{loop};
  int calls = 0;
};

TEST_F(UdevNoticesTest, DevicesThatArePresentAreNoArrivals) {
  auto devices = watch();
  ASSERT_FALSE(devices.portFailed);
  EXPECT_FALSE(devices.attachError);
  EXPECT_FALSE(devices.detachError);
  ASSERT_TRUE(devices.observation.active());
  ASSERT_TRUE(loop.ready);
  loop.ready();  // nothing has been sent, and reading does not wait
  EXPECT_EQ(calls, 0);
}

TEST_F(UdevNoticesTest, WithdrawingStopsListening) {
  auto devices = watch();
  ASSERT_TRUE(loop.ready);
  devices.observation.reset();
  EXPECT_FALSE(loop.ready);
}

TEST_F(UdevNoticesTest, LoopThatRefusesMeansThatNothingIsWatched) {
  loop.refusing = true;
  const auto devices = watch();
  EXPECT_TRUE(devices.portFailed);
  EXPECT_FALSE(devices.observation.active());
}

}  // namespace
}  // namespace velotap
