#include "adapters/linux/devices/device_access.hpp"

#include <gtest/gtest.h>

namespace velotap::test {
namespace {

TEST(AccessProblems, nothingInTheWayNeedsNoWords) {
  EXPECT_TRUE(AccessProblems().none());
  EXPECT_EQ(AccessProblems().text(), "");
}

TEST(AccessProblems, namesEverythingThatIs) {
  const AccessProblems problems = {
      .unreadableNodes = {"/dev/input/event5"}, .uinputMissing = false, .uinputDenied = true};
  EXPECT_FALSE(problems.none());
  EXPECT_EQ(problems.text(), "/dev/uinput may not be written; /dev/input/event5 may not be read");
}

}  // namespace
}  // namespace velotap::test
