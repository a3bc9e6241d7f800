// The accessibility permission. Main thread. Cheap enough to be asked every second.
#pragma once

#include "adapters/macos/core_foundation/core_foundation_api.hpp"
#include "adapters/macos/trust/accessibility_api.hpp"
#include "platform/system_notices.hpp"

namespace velotap {

class MacTrust final : public AccessibilityTrust {
 public:
  MacTrust(const CoreFoundationApi& cf, const AccessibilityApi& accessibility)
      : cf_(cf), accessibility_(accessibility) {}

  [[nodiscard]] bool trusted() override { return accessibility_.AXIsProcessTrusted() != 0; }
  /// Makes the system show its prompt, which comes later and answers nothing here.
  void request();

 private:
  const CoreFoundationApi& cf_;
  const AccessibilityApi& accessibility_;
};

}  // namespace velotap
