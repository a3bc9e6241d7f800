#include "app/macos/alert_windows.hpp"

#include <gtest/gtest.h>

#include "app/macos/mac_world.hpp"

namespace velotap::test {
namespace {

TEST(AlertWindowsTest, thePermissionIsExplainedAfterTheLaunchAndSettingsOnlyComeToTheFront) {
  static MacWorld world;
  static Application application(world.surroundings());
  int activations = 0;
  AlertWindows windows([&] { ++activations; });
  windows.connect(application);
  world.panel.answer = 1002;  // the third button: later

  application.onboarding().show();
  EXPECT_TRUE(world.panel.shown.empty()) << "the launch goes on";
  EXPECT_TRUE(application.onboarding().exists());
  world.dispatch.runReady();
  ASSERT_EQ(world.panel.shown.size(), 1U);
  EXPECT_EQ(world.panel.shown[0].buttons.size(), 3U);
  EXPECT_FALSE(application.onboarding().exists()) << "it can be shown again";

  windows.showSettings(SettingsPane::about);
  EXPECT_EQ(activations, 1);
  EXPECT_FALSE(windows.editor());
  application.onboarding().setView({});
}

}  // namespace
}  // namespace velotap::test
