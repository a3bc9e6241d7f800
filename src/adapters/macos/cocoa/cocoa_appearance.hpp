// How the system wants its windows to look. Main thread.
#pragma once

#include <functional>
#include <memory>

#include "base/observer_list.hpp"

namespace velotap {

class CocoaAppearance {
 public:
  virtual ~CocoaAppearance() = default;
  [[nodiscard]] virtual bool dark() = 0;
  [[nodiscard]] virtual bool highContrast() = 0;
  /// Calls back on the main thread after one of the answers may have changed.
  [[nodiscard]] virtual Observation observe(std::function<void()> changed) = 0;

  /// The appearance of this application. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<CocoaAppearance> system();
};

}  // namespace velotap
