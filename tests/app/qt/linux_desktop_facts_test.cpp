#include "app/qt/linux_desktop_facts.hpp"

#include <gtest/gtest.h>

#include <cerrno>

namespace velotap {
namespace {

TEST(LinuxDesktopFacts, EverySourceHasATeller) {
  EXPECT_EQ(frontTeller(FrontSourceKind::none), FrontTeller::nobody);
  EXPECT_EQ(frontTeller(FrontSourceKind::x11), FrontTeller::xServer);
  EXPECT_EQ(frontTeller(FrontSourceKind::wlroots), FrontTeller::compositor);
  EXPECT_EQ(frontTeller(FrontSourceKind::kdeWindowManagement), FrontTeller::compositor);
  EXPECT_EQ(frontTeller(FrontSourceKind::kdeScript), FrontTeller::compositor);
  EXPECT_EQ(frontTeller(FrontSourceKind::gnomeExtension), FrontTeller::extension);
}

TEST(LinuxDesktopFacts, OnlyRefusedDevicesAreTold) {
  const auto device = [](const char* name, GrabState state, int error) {
    return LinuxEventTaps::DeviceStatus{
        .path = "/dev/input/event1",
        .name = name,
        .status = {.state = state, .trouble = GrabTrouble::device, .error = error},
        .trouble = {}};
  };
  const auto refused = refusedDevices(
      {device("Resting", GrabState::resting, 0), device("Held", GrabState::refused, EBUSY),
       device("Ours", GrabState::grabbed, 0), device("Forbidden", GrabState::refused, EACCES)});
  ASSERT_EQ(refused.size(), 2U);
  EXPECT_EQ(refused[0].name, "Held");
  EXPECT_TRUE(refused[0].heldByAnother);
  EXPECT_EQ(refused[1].name, "Forbidden");
  EXPECT_FALSE(refused[1].heldByAnother);
}

}  // namespace
}  // namespace velotap
