// The port for what needs the person's answer: modal alerts and system settings pages.
#pragma once

#include <string>
#include <vector>

namespace velotap {

struct AlertRequest {
  std::string message;
  std::string informativeText;
  std::vector<std::string> buttons;  ///< the first one is the default
  bool closesWithFirst = false;  ///< what closing it unanswered chooses; else it is the last button
};

/// Main thread.
class Alerts {
 public:
  virtual ~Alerts() = default;
  /// Brings the program to the front and shows the alert until it is answered; the index of the
  /// button that was chosen.
  virtual int runModal(const AlertRequest& request) = 0;
  /// Opens an address with whatever the system has for it.
  virtual void openUrl(const std::string& url) = 0;
};

}  // namespace velotap
