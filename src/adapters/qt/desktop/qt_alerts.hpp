// Alerts as modal dialogs, and addresses by whatever the desktop has for them.
//
// Main thread. While an alert is open its own event loop serves everything else.
#pragma once

#include "platform/alerts.hpp"

namespace velotap {

class QtAlerts final : public Alerts {
 public:
  /// Closing the alert chooses its last button, as Escape does.
  int runModal(const AlertRequest& request) override;
  void openUrl(const std::string& url) override;
};

}  // namespace velotap
