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
  const auto refused = refusedDevices({
      {"/dev/input/event1", "Resting", {GrabState::resting, 0}},
      {"/dev/input/event2", "Held", {GrabState::refused, EBUSY}},
      {"/dev/input/event3", "Ours", {GrabState::grabbed, 0}},
      {"/dev/input/event4", "Forbidden", {GrabState::refused, EACCES}},
  });
  ASSERT_EQ(refused.size(), 2U);
  EXPECT_EQ(refused[0].name, "Held");
  EXPECT_TRUE(refused[0].heldByAnother);
  EXPECT_EQ(refused[1].name, "Forbidden");
  EXPECT_FALSE(refused[1].heldByAnother);
}

}  // namespace
}  // namespace velotap
