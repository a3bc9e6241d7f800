// The permission, given and taken by the simulation. Any thread.
#pragma once

#include <atomic>

#include "platform/system_notices.hpp"

namespace velotap {

class SimulatedTrust final : public AccessibilityTrust {
 public:
  [[nodiscard]] bool trusted() override { return trusted_; }
  void setTrusted(bool trusted) { trusted_ = trusted; }

 private:
  std::atomic<bool> trusted_{true};
};

}  // namespace velotap
