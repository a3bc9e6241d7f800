#include "adapters/macos/trust/mac_trust.hpp"

#include "adapters/macos/core_foundation/cf_ref.hpp"

namespace velotap {

void MacTrust::request() {
  const void* key = *accessibility_.kAXTrustedCheckOptionPrompt;
  const void* value = *cf_.kCFBooleanTrue;
  const CfRef<CFDictionaryRef> options(
      cf_, cf_.CFDictionaryCreate(nullptr, &key, &value, 1, cf_.kCFTypeDictionaryKeyCallBacks,
                                  cf_.kCFTypeDictionaryValueCallBacks));
  if (options) accessibility_.AXIsProcessTrustedWithOptions(options.get());
}

}  // namespace velotap
