// Operating-system services of the shell that remember what they were asked, for tests of the
// application's models.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/announcements.hpp"
#include "platform/login_item.hpp"

namespace velotap::test {

class FakeLoginItem final : public LoginItemService {
 public:
  [[nodiscard]] LoginItemStatus status() override { return now; }
  [[nodiscard]] std::optional<std::string> registerProgram() override {
    if (!error) now = LoginItemStatus::enabled;
    return error;
  }
  [[nodiscard]] std::optional<std::string> unregisterProgram() override {
    if (!error) now = LoginItemStatus::notRegistered;
    return error;
  }
  void openSettings() override { ++settingsOpened; }

  LoginItemStatus now = LoginItemStatus::notRegistered;
  std::optional<std::string> error;
  int settingsOpened = 0;
};

class FakeAnnouncements final : public Announcements {
 public:
  void post(const std::string& message, AnnouncementPriority priority) override {
    spoken.push_back(message + " (" + std::to_string(static_cast<int>(priority)) + ")");
  }
  std::vector<std::string> spoken;
};

}  // namespace velotap::test
