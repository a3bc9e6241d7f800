// What every Applications promises, whoever knows the applications.
//
// A world has what its test installs and starts, and nothing else.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/applications.hpp"

namespace velotap::test {

class ApplicationsWorld {
 public:
  virtual ~ApplicationsWorld() = default;
  [[nodiscard]] virtual Applications& applications() = 0;
  virtual void install(const std::string& id, const std::string& name) = 0;
  virtual void remove(const std::string& id) = 0;
  /// One process of an application that is installed.
  virtual void start(const std::string& id) = 0;
};

template <typename World>
class ApplicationsContract : public ::testing::Test {
 protected:
  ApplicationsContract() {
    world_.install("org.example.editor", "Editor");
    world_.install("org.example.viewer", "Viewer");
  }
  std::vector<std::string> installed() {
    std::vector<std::string> ids;
    for (const ApplicationBundle& each : world_.applications().installed()) {
      ids.push_back(each.bundleId);
    }
    std::sort(ids.begin(), ids.end());
    return ids;
  }
  World world_;
};

TYPED_TEST_SUITE_P(ApplicationsContract);

TYPED_TEST_P(ApplicationsContract, anInstalledOneIsFoundByItsIdentifier) {
  const auto found = this->world_.applications().find("org.example.editor");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->bundleId, "org.example.editor");
  EXPECT_EQ(found->displayName, "Editor");
  EXPECT_FALSE(found->location.empty());
}

TYPED_TEST_P(ApplicationsContract, anyOtherIsNot) {
  EXPECT_FALSE(this->world_.applications().find("org.example.missing"));
  EXPECT_FALSE(this->world_.applications().find(""));
}

TYPED_TEST_P(ApplicationsContract, allInstalledOnesAreOfferedOnceEach) {
  EXPECT_EQ(this->installed(),
            (std::vector<std::string>{"org.example.editor", "org.example.viewer"}));
}

TYPED_TEST_P(ApplicationsContract, oneThatIsRunningSaysItsNameAndKind) {
  EXPECT_TRUE(this->world_.applications().running().empty());
  this->world_.start("org.example.viewer");
  const auto running = this->world_.applications().running();
  ASSERT_EQ(running.size(), 1U);
  EXPECT_EQ(running[0].bundleId, "org.example.viewer");
  EXPECT_EQ(running[0].name, "Viewer");
  EXPECT_TRUE(running[0].regular);
}

TYPED_TEST_P(ApplicationsContract, oneThatWasRemovedIsGone) {
  ASSERT_EQ(this->installed().size(), 2U);
  this->world_.remove("org.example.editor");
  EXPECT_FALSE(this->world_.applications().find("org.example.editor"));
  EXPECT_EQ(this->installed(), std::vector<std::string>{"org.example.viewer"});
}

REGISTER_TYPED_TEST_SUITE_P(ApplicationsContract, anInstalledOneIsFoundByItsIdentifier,
                            anyOtherIsNot, allInstalledOnesAreOfferedOnceEach,
                            oneThatIsRunningSaysItsNameAndKind, oneThatWasRemovedIsGone);

}  // namespace velotap::test
