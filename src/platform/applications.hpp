// The port for what is known of applications: by identifier, installed, running.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace velotap {

/// Where an application is and how it calls itself. Names that it does not have are empty.
struct ApplicationBundle {
  std::string bundleId;
  std::string displayName;
  std::string bundleName;
  std::string location;  ///< path of the bundle or desktop entry
};

struct RunningInstance {
  std::string bundleId;  ///< empty when it has none
  std::string name;
  bool regular = true;  ///< one with windows of its own, as opposed to agents and helpers
};

/// Main thread.
class Applications {
 public:
  virtual ~Applications() = default;
  /// Nothing when no such application is installed.
  [[nodiscard]] virtual std::optional<ApplicationBundle> find(const std::string& bundleId) = 0;
  /// Everything a person could choose, in any order.
  [[nodiscard]] virtual std::vector<ApplicationBundle> installed() = 0;
  [[nodiscard]] virtual std::vector<RunningInstance> running() = 0;
};

}  // namespace velotap
