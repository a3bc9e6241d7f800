// Modal alerts of AppKit, and addresses opened by the shared workspace. Main thread.
#pragma once

#include <memory>

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "platform/alerts.hpp"

namespace velotap {

/// What the adapters ask of an alert panel, which only Objective-C can show.
class CocoaAlertPanel {
 public:
  virtual ~CocoaAlertPanel() = default;
  /// Brings the program to the front, shows the alert until it is answered, and returns the
  /// system's code of the answer.
  virtual long runModal(const AlertRequest& request) = 0;
  /// The code of the first button; the next ones follow it.
  [[nodiscard]] virtual long firstButton() const = 0;

  /// The panel of this system. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<CocoaAlertPanel> system();
};

class MacAlerts final : public Alerts {
 public:
  MacAlerts(CocoaAlertPanel& panel, CocoaWorkspace& workspace)
      : panel_(panel), workspace_(workspace) {}

  int runModal(const AlertRequest& request) override;
  void openUrl(const std::string& url) override { workspace_.openUrl(url); }

 private:
  CocoaAlertPanel& panel_;
  CocoaWorkspace& workspace_;
};

}  // namespace velotap
