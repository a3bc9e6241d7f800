// Applications as Linux knows them: by their desktop entries, running by their processes.
//
// Main thread. An entry names the program that it starts; an application runs when this user runs
// that program. Applications that start under another name are not found running, which costs a
// person a click on the list of the installed ones.
#pragma once

#include <string>
#include <vector>

#include "adapters/linux/workspace/installed_applications.hpp"
#include "platform/applications.hpp"

namespace velotap {

class LinuxApplications final : public Applications {
 public:
  /// `folders` hold the desktop entries, the user's own first; `processes` is "/proc".
  LinuxApplications(InstalledApplications& installed, std::vector<std::string> folders,
                    std::string processes = "/proc");

  [[nodiscard]] std::optional<ApplicationBundle> find(const std::string& bundleId) override;
  [[nodiscard]] std::vector<ApplicationBundle> installed() override;
  [[nodiscard]] std::vector<RunningInstance> running() override;

  /// Name or path of the application's icon; empty when it has none.
  [[nodiscard]] std::string icon(const std::string& bundleId);

 private:
  [[nodiscard]] ApplicationBundle bundleOf(const InstalledApplication& application) const;

  InstalledApplications& installed_;
  std::vector<std::string> folders_;
  std::string processes_;
};

}  // namespace velotap
