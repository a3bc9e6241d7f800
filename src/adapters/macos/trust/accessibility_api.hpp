// The functions of the accessibility permission that the adapters call, as a table: on a Mac it is
// filled from the framework itself, in tests from recorders. Names and signatures are its own.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

namespace velotap {

struct AccessibilityApi {
  const CFStringRef* kAXTrustedCheckOptionPrompt;
  Boolean (*AXIsProcessTrusted)();
  Boolean (*AXIsProcessTrustedWithOptions)(CFDictionaryRef);

  /// The framework of this system. Exists on a Mac only.
  [[nodiscard]] static const AccessibilityApi& system();
};

}  // namespace velotap
