// Applications on Linux: what desktop entries describe, and which of them run.
//
// Main thread. An application's identifier is its desktop-file id. One runs when a process was
// started as it, or runs the program that its entry, and no other entry of the menus, names.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "adapters/linux/applications/running_programs.hpp"
#include "adapters/linux/workspace/installed_applications.hpp"
#include "platform/applications.hpp"

namespace velotap {

class LinuxApplications final : public Applications {
 public:
  using Running = std::function<std::vector<RunningProgram>()>;

  /// `running` defaults to this user's processes.
  explicit LinuxApplications(InstalledApplications& installed, Running running = nullptr);

  [[nodiscard]] std::optional<ApplicationBundle> find(const std::string& bundleId) override;
  /// What menus show.
  [[nodiscard]] std::vector<ApplicationBundle> installed() override;
  [[nodiscard]] std::vector<RunningInstance> running() override;
  /// Name or path of an application's icon; empty when it has none.
  [[nodiscard]] std::string icon(const std::string& bundleId);

 private:
  InstalledApplications& installed_;
  Running running_;
};

}  // namespace velotap
