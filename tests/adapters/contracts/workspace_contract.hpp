// What every Workspace promises, whatever desktop it asks.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/workspace.hpp"

namespace velotap::test {

class WorkspaceWorld {
 public:
  virtual ~WorkspaceWorld() = default;
  [[nodiscard]] virtual Workspace& workspace() = 0;
  /// An application comes to the front, and everybody has heard of it; nothing: the system does not
  /// say which.
  virtual void activate(std::optional<RunningApplication> application) = 0;
};

template <typename World>
class WorkspaceContract : public ::testing::Test {
 protected:
  static RunningApplication application(const char* id, const char* name) {
    return {AppId::intern(id), name};
  }
  World world_;
  Workspace& workspace_ = world_.workspace();
};

TYPED_TEST_SUITE_P(WorkspaceContract);

TYPED_TEST_P(WorkspaceContract, theFrontIsWhoWasActivatedLast) {
  this->world_.activate(this->application("com.example.one", "One"));
  EXPECT_EQ(this->workspace_.frontmostBundleId().text(), "com.example.one");
  ASSERT_TRUE(this->workspace_.frontmostApplication());
  EXPECT_EQ(this->workspace_.frontmostApplication()->name, "One");
  this->world_.activate(this->application("com.example.Two", ""));
  EXPECT_EQ(this->workspace_.frontmostBundleId().text(), "com.example.Two");
  EXPECT_EQ(this->workspace_.frontmostApplication()->name, "");
}

TYPED_TEST_P(WorkspaceContract, whereNobodyIsKnownNobodyIsInFront) {
  this->world_.activate(std::nullopt);
  EXPECT_FALSE(this->workspace_.frontmostBundleId());
  EXPECT_FALSE(this->workspace_.frontmostApplication());
}

TYPED_TEST_P(WorkspaceContract, activationsAreToldToWhoStillListens) {
  std::vector<std::string> told;
  Observation watching = this->workspace_.observeActivations(
      [&](const std::optional<RunningApplication>& application) {
        told.emplace_back(application ? std::string(application->bundleId.text()) : "nobody");
      });
  this->world_.activate(this->application("com.example.one", "One"));
  this->world_.activate(std::nullopt);
  watching.reset();
  this->world_.activate(this->application("com.example.two", "Two"));
  EXPECT_EQ(told, (std::vector<std::string>{"com.example.one", "nobody"}));
}

REGISTER_TYPED_TEST_SUITE_P(WorkspaceContract, theFrontIsWhoWasActivatedLast,
                            whereNobodyIsKnownNobodyIsInFront, activationsAreToldToWhoStillListens);

// Where an application is known by more than its identifier.
template <typename World>
class NamelessApplicationContract : public WorkspaceContract<World> {};

TYPED_TEST_SUITE_P(NamelessApplicationContract);

TYPED_TEST_P(NamelessApplicationContract, anApplicationMayHaveNoIdentifier) {
  this->world_.activate(RunningApplication{AppId(), "Script"});
  EXPECT_FALSE(this->workspace_.frontmostBundleId());
  ASSERT_TRUE(this->workspace_.frontmostApplication());
  EXPECT_FALSE(this->workspace_.frontmostApplication()->bundleId);
}

REGISTER_TYPED_TEST_SUITE_P(NamelessApplicationContract, anApplicationMayHaveNoIdentifier);

}  // namespace velotap::test
