#include "adapters/linux/devices/device_access.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

namespace velotap {
namespace {

TEST(AccessProblems, NoneMakeNoSentence) {
  const AccessProblems problems;
  EXPECT_TRUE(problems.none());
  EXPECT_EQ(problems.text(), "");
}

TEST(AccessProblems, EachIsAProblemAndNamed) {
  const AccessProblems missing{.unreadableNodes = {}, .uinputMissing = true, .uinputDenied = false};
  EXPECT_FALSE(missing.none());
  EXPECT_EQ(missing.text(), "/dev/uinput does not exist (load the uinput module)");

  const AccessProblems denied{.unreadableNodes = {}, .uinputMissing = false, .uinputDenied = true};
  EXPECT_FALSE(denied.none());
  EXPECT_EQ(denied.text(), "/dev/uinput may not be written");

  const AccessProblems unreadable{
      .unreadableNodes = {"/dev/input/event5"}, .uinputMissing = false, .uinputDenied = false};
  EXPECT_FALSE(unreadable.none());
  EXPECT_EQ(unreadable.text(), "/dev/input/event5 may not be read");
}

TEST(AccessProblems, SeveralAreOneSentence) {
  const AccessProblems problems{.unreadableNodes = {"/dev/input/event5", "/dev/input/event7"},
                                .uinputMissing = false,
                                .uinputDenied = true};
  EXPECT_EQ(problems.text(),
            "/dev/uinput may not be written; /dev/input/event5 may not be read; /dev/input/event7 "
            "may not be read");
}

TEST(DeviceAccess, AgreesWithThisMachine) {
  const AccessProblems problems = findAccessProblems();
  EXPECT_EQ(problems.uinputMissing, access("/dev/uinput", F_OK) != 0);
  EXPECT_EQ(problems.uinputMissing || problems.uinputDenied, access("/dev/uinput", W_OK) != 0);
  EXPECT_EQ(DeviceAccess().trusted(), problems.none());
}

}  // namespace
}  // namespace velotap
