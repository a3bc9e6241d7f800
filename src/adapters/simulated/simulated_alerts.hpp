// A person who answers every alert at once, and a system that only remembers which addresses it was
// asked to open.
//
// Main thread.
#pragma once

#include <string>
#include <vector>

#include "platform/alerts.hpp"

namespace velotap {

class SimulatedAlerts final : public Alerts {
 public:
  int runModal(const AlertRequest& request) override {
    shown_.push_back(request);
    return answer_;
  }
  void openUrl(const std::string& url) override { opened_.push_back(url); }

  /// The button that is chosen from now on; the first one by default.
  void setAnswer(int button) { answer_ = button; }
  [[nodiscard]] const std::vector<AlertRequest>& shown() const noexcept { return shown_; }
  [[nodiscard]] const std::vector<std::string>& openedUrls() const noexcept { return opened_; }

 private:
  int answer_ = 0;
  std::vector<AlertRequest> shown_;
  std::vector<std::string> opened_;
};

}  // namespace velotap
