// A desktop's applications: one comes to the front when the simulation says so.
//
// What a live query answers can run ahead of what was announced, as it does while a real desktop is
// switching applications. Live queries may come from any thread; all else is the main thread's.
#pragma once

#include <atomic>
#include <functional>
#include <optional>

#include "platform/workspace.hpp"

namespace velotap {

class SimulatedWorkspace final : public Workspace {
 public:
  [[nodiscard]] AppId ownBundleId() const override { return ownBundleId_; }
  [[nodiscard]] AppId frontmostBundleId() override { return live_; }
  /// The application announced last.
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override { return front_; }
  [[nodiscard]] Observation observeActivations(
      std::function<void(const std::optional<RunningApplication>&)> activated) override;

  /// An application comes to the front, and everybody is told; live queries agree again. Nothing:
  /// the system does not say which.
  void activate(std::optional<RunningApplication> application);
  /// What live queries answer until the next activation.
  void setLive(AppId application) { live_ = application; }
  /// None for a build without an identity. To be set before anybody asks.
  void setOwnBundleId(AppId own) { ownBundleId_ = own; }

 private:
  AppId ownBundleId_ = AppId::intern("app.norwend.velotap");
  std::optional<RunningApplication> front_ =
      RunningApplication{AppId::intern("com.example.editor"), "Editor"};
  std::atomic<AppId> live_{front_->bundleId};
  ObserverList<const std::optional<RunningApplication>&> activations_;
};

}  // namespace velotap
