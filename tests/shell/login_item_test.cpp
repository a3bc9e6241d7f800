#include "shell/login_item.hpp"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace velotap {
namespace {

class RecordingService final : public LoginItemService {
 public:
  [[nodiscard]] LoginItemStatus status() override { return now; }
  [[nodiscard]] std::optional<std::string> registerProgram() override {
    calls.emplace_back("register");
    return error;
  }
  [[nodiscard]] std::optional<std::string> unregisterProgram() override {
    calls.emplace_back("unregister");
    return error;
  }
  void openSettings() override { calls.emplace_back("settings"); }

  LoginItemStatus now = LoginItemStatus::notRegistered;
  std::optional<std::string> error;
  std::vector<std::string> calls;
};

TEST(LoginItem, TogglesByWhatTheSystemSays) {
  const std::pair<LoginItemStatus, const char*> rows[] = {
      {LoginItemStatus::requiresApproval, "settings"},
      {LoginItemStatus::enabled, "unregister"},
      {LoginItemStatus::notRegistered, "register"},
      {LoginItemStatus::notFound, "register"}};
  for (const auto& [status, call] : rows) {
    RecordingService service;
    service.now = status;
    EXPECT_EQ(LoginItem(service).toggle(), std::nullopt);
    EXPECT_EQ(service.calls, std::vector<std::string>{call});
  }
}

TEST(LoginItem, HandsOnWhatTheSystemRefuses) {
  RecordingService service;
  service.error = "no space left";
  EXPECT_EQ(LoginItem(service).toggle(), "no space left");
  service.now = LoginItemStatus::enabled;
  EXPECT_EQ(LoginItem(service).toggle(), "no space left");
  service.now = LoginItemStatus::requiresApproval;
  EXPECT_EQ(LoginItem(service).toggle(), std::nullopt);
}

}  // namespace
}  // namespace velotap
