#include "adapters/macos/shell/mac_login_item.hpp"

#include <gtest/gtest.h>

namespace velotap::test {
namespace {

class FakeLoginService final : public CocoaLoginService {
 public:
  long statusNow = 0;
  std::optional<Error> error;
  std::vector<std::string> calls;

  long status() override { return statusNow; }
  std::optional<Error> registerService() override {
    calls.emplace_back("register");
    return error;
  }
  std::optional<Error> unregisterService() override {
    calls.emplace_back("unregister");
    return error;
  }
  void openLoginItemsSettings() override { calls.emplace_back("open"); }
};

class MacLoginItemTest : public ::testing::Test {
 protected:
  FakeLoginService service_;
  MacLoginItem item_{service_};
};

TEST_F(MacLoginItemTest, theSystemsNumbersHaveTheirNames) {
  const std::vector<LoginItemStatus> expected = {
      LoginItemStatus::notRegistered, LoginItemStatus::enabled, LoginItemStatus::requiresApproval,
      LoginItemStatus::notFound, LoginItemStatus::notFound};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    service_.statusNow = static_cast<long>(i);
    EXPECT_EQ(item_.status(), expected[i]) << i;
  }
  service_.statusNow = -1;
  EXPECT_EQ(item_.status(), LoginItemStatus::notFound);
}

TEST_F(MacLoginItemTest, successIsNothing) {
  EXPECT_EQ(item_.registerProgram(), std::nullopt);
  EXPECT_EQ(item_.unregisterProgram(), std::nullopt);
  item_.openSettings();
  EXPECT_EQ(service_.calls, (std::vector<std::string>{"register", "unregister", "open"}));
}

TEST_F(MacLoginItemTest, whatIsAlreadySoIsSuccessInItsOwnDirectionOnly) {
  service_.error = CocoaLoginService::Error{12, "already registered"};
  EXPECT_EQ(item_.registerProgram(), std::nullopt);
  EXPECT_EQ(item_.unregisterProgram(), "already registered");
  service_.error = CocoaLoginService::Error{6, "not found"};
  EXPECT_EQ(item_.unregisterProgram(), std::nullopt);
  EXPECT_EQ(item_.registerProgram(), "not found");
}

TEST_F(MacLoginItemTest, everyOtherErrorIsASentence) {
  for (const long code : {2L, 3L, 4L, 5L, 7L, 8L, 9L, 10L, 11L}) {
    service_.error = CocoaLoginService::Error{code, "sentence"};
    EXPECT_EQ(item_.registerProgram(), "sentence") << code;
    EXPECT_EQ(item_.unregisterProgram(), "sentence") << code;
  }
  service_.error = CocoaLoginService::Error{3, ""};
  EXPECT_EQ(item_.registerProgram(), "SMAppServiceError 3");
}

}  // namespace
}  // namespace velotap::test
