// Ports that have nothing behind them on Linux yet, and say so truthfully.
#pragma once

#include "platform/alerts.hpp"
#include "platform/event_taps.hpp"

namespace velotap {

/// Taps that install but never see an event: as long as no device is taken over, the system's own
/// clicks go their way without passing here.
class PassiveEventTaps final : public EventTaps {
 public:
  [[nodiscard]] std::unique_ptr<InstalledTap> install(TapLocation location, std::uint64_t mask,
                                                      Callbacks callbacks) override;
};

/// Without a window an alert is a line on standard error, answered with its first button.
class PrintedAlerts final : public Alerts {
 public:
  int runModal(const AlertRequest& request) override;
  void openUrl(const std::string& url) override;
};

}  // namespace velotap
