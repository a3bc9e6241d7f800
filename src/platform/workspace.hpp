// The port for the desktop: which application is in front.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/app_id.hpp"
#include "base/observer_list.hpp"

namespace velotap {

struct RunningApplication {
  AppId bundleId;    ///< none when the application has no identifier
  std::string name;  ///< localised name, empty when it has none
};

class Workspace {
 public:
  virtual ~Workspace() = default;
  /// The program's own identifier; none for a build without one.
  [[nodiscard]] virtual AppId ownBundleId() const = 0;
  /// Asked live, from any thread, without allocation: the identifier of the application in front.
  [[nodiscard]] virtual AppId frontmostBundleId() = 0;
  /// Main thread.
  [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;
  /// Calls back on the main thread whenever an application came to the front; with nothing when
  /// the system does not say which.
  [[nodiscard]] virtual Observation observeActivations(
      std::function<void(const std::optional<RunningApplication>&)> activated) = 0;
};

}  // namespace velotap
