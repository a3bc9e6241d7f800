// Updates for a build that names no feed: there are none, and the reason is told.
//
// Main thread.
#pragma once

#include "platform/updates.hpp"

namespace velotap {

class NoUpdates final : public UpdateService {
 public:
  void start() override {}
  [[nodiscard]] std::optional<std::string> unavailableReason() const override {
    return "updates.no.feed";
  }
  void checkForUpdates() override {}
  [[nodiscard]] bool checksAutomatically() const override { return false; }
  void setChecksAutomatically(bool) override {}
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastCheck() const override {
    return std::nullopt;
  }
  [[nodiscard]] Observation observe(std::function<void()>) override { return {}; }
};

}  // namespace velotap
