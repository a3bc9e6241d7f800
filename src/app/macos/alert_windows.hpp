// A program without windows of its own: the permission is explained in an alert, and the settings
// are those of the status menu. Main thread.
#pragma once

#include "app/macos/windows.hpp"

namespace velotap {

class AlertWindows final : public Windows {
 public:
  explicit AlertWindows(std::function<void()> activate) : activate_(std::move(activate)) {}

  void connect(Application& application) override;
  void showSettings(SettingsPane) override { activate_(); }
  void refreshLocalizedLabels() override {}
  [[nodiscard]] Editor editor() override { return {}; }
  void close() override {}

 private:
  std::function<void()> activate_;
};

}  // namespace velotap
