#include "adapters/linux/session/socket_recovery.hpp"

#include <gtest/gtest.h>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

class SocketRecoveryTest : public testing::Test {
 protected:
  PosixClock clock;
  PosixMainQueue loop{clock};
  TemporaryFolder folder;
  int told = 0;
};

TEST_F(SocketRecoveryTest, tellsOfAnySocketOnce) {
  SocketRecovery recovery(loop, {folder / "wayland-0", folder / "bus"});
  EXPECT_TRUE(recovery.arm([this] { ++told; }));
  folder.write("other", "");
  loop.runReady();
  EXPECT_EQ(told, 0);
  folder.write("bus", "");
  loop.runReady();
  EXPECT_EQ(told, 1);
  folder.write("wayland-0", "");
  loop.runReady();
  EXPECT_EQ(told, 1);
}

TEST_F(SocketRecoveryTest, mayBeArmedAgainWhenTold) {
  SocketRecovery recovery(loop, {folder / "wayland-0"});
  EXPECT_TRUE(recovery.arm([&] {
    ++told;
    EXPECT_TRUE(recovery.arm([this] { ++told; }));
  }));
  folder.write("wayland-0", "");
  loop.runReady();
  EXPECT_EQ(told, 1);
  folder.remove("wayland-0");
  folder.write("wayland-0", "");
  loop.runReady();
  EXPECT_EQ(told, 2);
}

TEST_F(SocketRecoveryTest, saysNothingWhenDisarmed) {
  SocketRecovery recovery(loop, {folder / "wayland-0"});
  EXPECT_TRUE(recovery.arm([this] { ++told; }));
  recovery.disarm();
  folder.write("wayland-0", "");
  loop.runReady();
  EXPECT_EQ(told, 0);
}

TEST_F(SocketRecoveryTest, admitsWhatItCannotWatch) {
  SocketRecovery nothing(loop, {});
  EXPECT_FALSE(nothing.arm([] {}));
  SocketRecovery half(loop, {folder / "wayland-0", "relative"});
  EXPECT_FALSE(half.arm([] {}));
}

}  // namespace
}  // namespace velotap
