#include "adapters/macos/shell/mac_trust_prompt.hpp"

namespace velotap {

bool MacTrustPrompt::openSettings() {
  return workspace_.openUrl(
      "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
}

bool MacTrustPrompt::revealProgram() {
  const auto bundle = workspace_.ownBundlePath();
  if (!bundle) return false;
  workspace_.reveal(*bundle);
  return true;
}

}  // namespace velotap
