// The applications that are installed, as the desktop-entry folders list them.
//
// Main thread. The folders are read when somebody asks first and again when somebody asks after
// something in them changed; between the two nothing is read and nothing wakes up. Reading costs
// some ten microseconds for each entry, a few milliseconds in all.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/linux/session/folder_watch.hpp"
#include "adapters/linux/workspace/application_index.hpp"

namespace velotap {

class InstalledApplications {
 public:
  /// `folders` in order of precedence: an entry hides those with its identifier in later folders.
  /// `languages` as for parseDesktopEntry.
  InstalledApplications(DescriptorLoop& loop, std::vector<std::string> folders,
                        std::vector<std::string> languages);

  /// Valid until the next call.
  [[nodiscard]] const ApplicationIndex& index();
  /// Would `index` read the folders? Then answers from an earlier one are old.
  [[nodiscard]] bool stale() const noexcept { return stale_; }

 private:
  void readFolders();

  DescriptorLoop& loop_;
  const std::vector<std::string> folders_;
  const std::vector<std::string> languages_;
  ApplicationIndex index_;
  std::unique_ptr<FolderWatch> watch_;
  bool stale_ = true;
};

}  // namespace velotap
