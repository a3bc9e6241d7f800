#include "adapters/macos/workspace/mac_applications.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_cocoa.hpp"

namespace velotap::test {
namespace {

class MacApplicationsTest : public ::testing::Test {
 protected:
  FakeWorkspace cocoa_;
  MacApplications applications_{cocoa_};
};

TEST_F(MacApplicationsTest, anInstalledApplicationIsFoundWithWhatItSaysOfItself) {
  cocoa_.bundles = {{.path = "/Applications/One.app",
                     .bundleId = "com.example.one",
                     .displayName = "One!",
                     .bundleName = "One"},
                    {.path = "/Applications/Two.app", .bundleId = "com.example.two"}};
  const auto one = applications_.find("com.example.one");
  ASSERT_TRUE(one);
  EXPECT_EQ(one->displayName, "One!");
  EXPECT_EQ(one->bundleName, "One");
  EXPECT_EQ(one->location, "/Applications/One.app");
  const auto two = applications_.find("com.example.two");
  ASSERT_TRUE(two);
  EXPECT_EQ(two->displayName + two->bundleName, "");
  EXPECT_FALSE(applications_.find("com.example.three"));
}

TEST_F(MacApplicationsTest, eachIdentifierIsInstalledOnceAndNoneIsNobody) {
  cocoa_.bundles = {{.path = "/Applications/One.app", .bundleId = "com.example.one"},
                    {.path = "/System/Applications/One.app", .bundleId = "com.example.one"},
                    {.path = "/Applications/Broken.app"},
                    {.path = "/Applications/Empty.app", .bundleId = ""}};
  const auto installed = applications_.installed();
  ASSERT_EQ(installed.size(), 1U);
  EXPECT_EQ(installed[0].location, "/Applications/One.app");
}

TEST_F(MacApplicationsTest, runningOnesAreRegularOrNot) {
  cocoa_.applications = {{.bundleId = "com.example.one", .name = "One", .regular = true},
                         {.name = "helper", .regular = false}};
  const auto running = applications_.running();
  ASSERT_EQ(running.size(), 2U);
  EXPECT_EQ(running[0].bundleId, "com.example.one");
  EXPECT_EQ(running[0].name, "One");
  EXPECT_TRUE(running[0].regular);
  EXPECT_EQ(running[1].bundleId, "");
  EXPECT_FALSE(running[1].regular);
}

}  // namespace
}  // namespace velotap::test
