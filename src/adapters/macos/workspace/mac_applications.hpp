// What is known of applications, over the shared workspace and the folders that they are kept in.
// Main thread.
#pragma once

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "platform/applications.hpp"

namespace velotap {

class MacApplications final : public Applications {
 public:
  explicit MacApplications(CocoaWorkspace& cocoa) : cocoa_(cocoa) {}

  [[nodiscard]] std::optional<ApplicationBundle> find(const std::string& bundleId) override;
  /// Each identifier once, in its first folder. Bundles without one cannot be chosen.
  [[nodiscard]] std::vector<ApplicationBundle> installed() override;
  [[nodiscard]] std::vector<RunningInstance> running() override;

 private:
  CocoaWorkspace& cocoa_;
};

}  // namespace velotap
