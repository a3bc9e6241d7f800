#include "adapters/macos/shell/mac_alerts.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_cocoa.hpp"

namespace velotap::test {
namespace {

class MacAlertsTest : public ::testing::Test {
 protected:
  FakeAlertPanel panel_;
  FakeWorkspace workspace_;
  MacAlerts alerts_{panel_, workspace_};
};

TEST_F(MacAlertsTest, theAnswerIsTheIndexOfTheButton) {
  const AlertRequest request{"message", "text", {"OK", "Open System Settings"}};
  EXPECT_EQ(alerts_.runModal(request), 0);
  panel_.answer = 1001;
  EXPECT_EQ(alerts_.runModal(request), 1);
  ASSERT_EQ(panel_.shown.size(), 2U);
  EXPECT_EQ(panel_.shown[0].message, "message");
  EXPECT_EQ(panel_.shown[0].informativeText, "text");
  EXPECT_EQ(panel_.shown[0].buttons, request.buttons);
}

// Deleting nothing and sending nothing is what the last button stands for.
TEST_F(MacAlertsTest, anAlertThatNobodyAnsweredTakesTheLastButton) {
  const AlertRequest request{"", "", {"Email Report", "Delete", "Later"}};
  for (const long code : {-1000L, 0L, 999L, 1003L}) {
    panel_.answer = code;
    EXPECT_EQ(alerts_.runModal(request), 2) << code;
  }
  panel_.answer = 1002;
  EXPECT_EQ(alerts_.runModal(request), 2);
}

TEST_F(MacAlertsTest, withoutButtonsOfOursTheOnlyOneIsTheFirst) {
  EXPECT_EQ(alerts_.runModal({"", "", {}}), 0);
  panel_.answer = -1;
  EXPECT_EQ(alerts_.runModal({"", "", {}}), 0);
}

TEST_F(MacAlertsTest, addressesGoToTheWorkspace) {
  alerts_.openUrl("x-apple.systempreferences:com.apple.preference.trackpad");
  EXPECT_EQ(workspace_.opened,
            (std::vector<std::string>{"x-apple.systempreferences:com.apple.preference.trackpad"}));
}

}  // namespace
}  // namespace velotap::test
