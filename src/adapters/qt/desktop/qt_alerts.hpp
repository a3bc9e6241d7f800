// Alerts as modal dialogs. Addresses, pages of the system's settings among them, are the program's
// to open.
//
// Main thread. While an alert is open its own event loop serves everything else.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/alerts.hpp"

namespace velotap {

class QtAlerts final : public Alerts {
 public:
  explicit QtAlerts(std::function<void(const std::string& url)> openUrl)
      : openUrl_(std::move(openUrl)) {}
  /// Closing the alert chooses the button that the request says, as Escape does.
  int runModal(const AlertRequest& request) override;
  void openUrl(const std::string& url) override;

 private:
  std::function<void(const std::string&)> openUrl_;
};

}  // namespace velotap
