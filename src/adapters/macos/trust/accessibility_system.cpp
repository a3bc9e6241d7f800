#include "adapters/macos/trust/accessibility_api.hpp"

namespace velotap {

const AccessibilityApi& AccessibilityApi::system() {
  static const AccessibilityApi api = {
      .kAXTrustedCheckOptionPrompt = &::kAXTrustedCheckOptionPrompt,
      .AXIsProcessTrusted = &::AXIsProcessTrusted,
      .AXIsProcessTrustedWithOptions = &::AXIsProcessTrustedWithOptions,
  };
  return api;
}

}  // namespace velotap
