// The accessibility permission's prompt and its page of the system's settings. Main thread.
//
// The system does not tell when the permission changes, so there is nothing to observe: who wants
// to know has to ask again.
#pragma once

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "adapters/macos/trust/mac_trust.hpp"
#include "platform/trust_prompt.hpp"

namespace velotap {

class MacTrustPrompt final : public TrustPrompt {
 public:
  MacTrustPrompt(MacTrust& trust, CocoaWorkspace& workspace)
      : trust_(trust), workspace_(workspace) {}

  void request() override { trust_.request(); }
  bool openSettings() override;
  /// The bundle in the Finder; false for a program without one.
  bool revealProgram() override;
  [[nodiscard]] Observation observe(std::function<void()>) override { return {}; }

 private:
  MacTrust& trust_;
  CocoaWorkspace& workspace_;
};

}  // namespace velotap
