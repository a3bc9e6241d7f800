// The desktop's applications over the shared workspace.
//
// Main thread, but for the live question who is in front.
#pragma once

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "adapters/macos/runtime/autorelease_pool.hpp"
#include "platform/workspace.hpp"

namespace velotap {

class MacWorkspace final : public Workspace {
 public:
  MacWorkspace(CocoaWorkspace& cocoa, const ObjectiveCApi& runtime);

  [[nodiscard]] AppId ownBundleId() const override { return own_; }
  [[nodiscard]] AppId frontmostBundleId() override;
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override;
  [[nodiscard]] Observation observeActivations(
      std::function<void(const std::optional<RunningApplication>&)> activated) override;

 private:
  CocoaWorkspace& cocoa_;
  const ObjectiveCApi& runtime_;
  AppId own_;
};

}  // namespace velotap
