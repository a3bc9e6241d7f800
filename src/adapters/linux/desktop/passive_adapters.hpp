// Ports for a program without a window.
#pragma once

#include "platform/alerts.hpp"
#include "platform/announcements.hpp"
#include "platform/updates.hpp"

namespace velotap {

/// Without a window an alert is a line on standard error, answered with its first button.
class PrintedAlerts final : public Alerts {
 public:
  int runModal(const AlertRequest& request) override;
  void openUrl(const std::string& url) override;
};

/// Without a window there is nobody to speak to.
class SilentAnnouncements final : public Announcements {
 public:
  void post(const std::string& /*message*/, AnnouncementPriority /*priority*/) override {}
};

/// Without a window nobody asks for updates, and none are looked for.
class NoUpdates final : public UpdateService {
 public:
  void start() override {}
  [[nodiscard]] std::optional<std::string> unavailableReason() const override {
    return "updates.unavailable.feed";
  }
  void checkForUpdates() override {}
  [[nodiscard]] bool checksAutomatically() const override { return false; }
  void setChecksAutomatically(bool /*on*/) override {}
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastCheck() const override {
    return std::nullopt;
  }
  [[nodiscard]] Observation observe(std::function<void()> /*changed*/) override { return {}; }
};

}  // namespace velotap
