#include "adapters/simulated/simulated_workspace.hpp"

#include <utility>

namespace velotap {

Observation SimulatedWorkspace::observeActivations(
    std::function<void(const std::optional<RunningApplication>&)> activated) {
  return activations_.add(std::move(activated));
}

void SimulatedWorkspace::activate(std::optional<RunningApplication> application) {
  front_ = std::move(application);
  live_ = front_ ? front_->bundleId : AppId();
  const auto announced = front_;  // an observer may bring another application to the front
  activations_.notify(announced);
}

}  // namespace velotap
