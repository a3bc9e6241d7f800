// Ports that have nothing behind them on Linux yet, and say so truthfully.
#pragma once

#include "platform/alerts.hpp"

namespace velotap {

/// Without a window an alert is a line on standard error, answered with its first button.
class PrintedAlerts final : public Alerts {
 public:
  int runModal(const AlertRequest& request) override;
  void openUrl(const std::string& url) override;
};

}  // namespace velotap
