// The applications that are installed, as the desktop-entry folders list them.
//
// Main thread. The folders are read when somebody asks first and again when somebody asks after
// something in them changed; between the two nothing is read and nothing wakes up.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/linux/workspace/application_index.hpp"
#include "adapters/linux/workspace/folder_watch.hpp"

namespace velotap {

class InstalledApplications {
 public:
  /// `folders` in order of precedence: an entry hides those with its identifier in later folders.
  /// `languages` as for parseDesktopEntry.
  InstalledApplications(DescriptorLoop& loop, std::vector<std::string> folders,
                        std::vector<std::string> languages);

  /// Valid until the next call.
  [[nodiscard]] const ApplicationIndex& index();
  /// Counts readings, so that whoever keeps answers can tell when they are old. Reads nothing.
  [[nodiscard]] unsigned generation() const noexcept { return generation_; }

 private:
  void readFolders();

  DescriptorLoop& loop_;
  const std::vector<std::string> folders_;
  const std::vector<std::string> languages_;
  ApplicationIndex index_;
  std::unique_ptr<FolderWatch> watch_;
  bool stale_ = true;
  unsigned generation_ = 0;
};

}  // namespace velotap
