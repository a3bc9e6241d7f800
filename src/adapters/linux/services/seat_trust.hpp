// The permission on Linux: may the device nodes be used, and is this the session at the screen?
//
// Main thread.
#pragma once

#include "adapters/linux/notices/session_activity.hpp"
#include "platform/system_notices.hpp"

namespace velotap {

class SeatTrust final : public AccessibilityTrust {
 public:
  SeatTrust(AccessibilityTrust& devices, SessionActivity& activity)
      : devices_(devices), activity_(activity) {}
  [[nodiscard]] bool trusted() override { return devices_.trusted() && activity_.active(); }

 private:
  AccessibilityTrust& devices_;
  SessionActivity& activity_;
};

}  // namespace velotap
