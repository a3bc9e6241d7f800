// The port for asking the person for the permission that AccessibilityTrust reports.
//
// Main thread. Asking never waits for the answer: the answer is found by asking AccessibilityTrust
// again.
#pragma once

#include <functional>

#include "base/observer_list.hpp"

namespace velotap {

class TrustPrompt {
 public:
  virtual ~TrustPrompt() = default;
  /// Shows the system's own prompt for the permission.
  virtual void request() = 0;
  /// Shows the place where the person gives the permission; false when it could not be shown.
  virtual bool openSettings() = 0;
  /// Shows the person the program's own file, to be dragged to where the permission is given; false
  /// when there is nothing to show.
  virtual bool revealProgram() = 0;
  /// Tells on the main thread that the permission may have changed. Inactive where the system does
  /// not tell: then it must be asked again and again.
  [[nodiscard]] virtual Observation observe(std::function<void()> mayHaveChanged) = 0;
};

}  // namespace velotap
