#include "adapters/macos/workspace/mac_workspace.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_cocoa.hpp"
#include "fakes/fake_quartz.hpp"

namespace velotap::test {
namespace {

class MacWorkspaceTest : public ::testing::Test {
 protected:
  FakeCoreFoundation cf_;
  FakeQuartz quartz_{cf_};
  FakeWorkspace cocoa_;
};

TEST_F(MacWorkspaceTest, theOwnIdentifierIsTheBundles) {
  EXPECT_EQ(MacWorkspace(cocoa_, quartz_.runtime()).ownBundleId().text(), "app.norwend.velotap");
  cocoa_.own.reset();
  EXPECT_FALSE(MacWorkspace(cocoa_, quartz_.runtime()).ownBundleId());
}

TEST_F(MacWorkspaceTest, theFrontIsAskedLive) {
  MacWorkspace workspace(cocoa_, quartz_.runtime());
  EXPECT_FALSE(workspace.frontmostBundleId());
  cocoa_.front = CocoaApplication{.bundleId = "com.example.one"};
  EXPECT_EQ(workspace.frontmostBundleId(), AppId::intern("com.example.one"));
  cocoa_.front = CocoaApplication{.bundleId = "com.example.two"};
  EXPECT_EQ(workspace.frontmostBundleId(), AppId::intern("com.example.two"));
}

// The system's answer is left to a pool, and touch threads have none of their own.
TEST_F(MacWorkspaceTest, theFrontIsAskedInsideOfAPool) {
  MacWorkspace workspace(cocoa_, quartz_.runtime());
  int pools = 0;
  cocoa_.asked = [&] { pools = quartz_.pools; };
  static_cast<void>(workspace.frontmostBundleId());
  EXPECT_EQ(pools, 1);
  EXPECT_EQ(quartz_.pools, 0);
}

TEST_F(MacWorkspaceTest, anIdentifierFitsOrIsNone) {
  MacWorkspace workspace(cocoa_, quartz_.runtime());
  cocoa_.front = CocoaApplication{.bundleId = std::string(1024, 'x')};
  EXPECT_EQ(workspace.frontmostBundleId().text(), std::string(1024, 'x'));
  cocoa_.front = CocoaApplication{.bundleId = std::string(1025, 'x')};
  EXPECT_FALSE(workspace.frontmostBundleId());
}

TEST_F(MacWorkspaceTest, whatAnApplicationLacksIsNoneOrEmpty) {
  MacWorkspace workspace(cocoa_, quartz_.runtime());
  EXPECT_EQ(workspace.frontmostApplication(), std::nullopt);
  cocoa_.front = CocoaApplication{};
  ASSERT_TRUE(workspace.frontmostApplication());
  EXPECT_FALSE(workspace.frontmostApplication()->bundleId);
  EXPECT_EQ(workspace.frontmostApplication()->name, "");
  cocoa_.front = CocoaApplication{.bundleId = "com.example.one", .name = "One"};
  EXPECT_EQ(workspace.frontmostApplication()->bundleId.text(), "com.example.one");
  EXPECT_EQ(workspace.frontmostApplication()->name, "One");
}

TEST_F(MacWorkspaceTest, anActivationIsToldWithItsApplicationOrWithNothing) {
  MacWorkspace workspace(cocoa_, quartz_.runtime());
  std::vector<std::string> told;
  Observation watching =
      workspace.observeActivations([&](const std::optional<RunningApplication>& application) {
        told.push_back(application ? application->name : "nothing");
      });
  cocoa_.tell(WorkspaceNotice::didActivate, CocoaApplication{.name = "One"});
  cocoa_.tell(WorkspaceNotice::didActivate);
  cocoa_.tell(WorkspaceNotice::didWake);
  watching.reset();
  cocoa_.tell(WorkspaceNotice::didActivate);
  EXPECT_EQ(told, (std::vector<std::string>{"One", "nothing"}));
}

}  // namespace
}  // namespace velotap::test
