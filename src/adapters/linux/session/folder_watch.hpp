// Tells that something appeared in, or changed in, folders: once, then it is done.
//
// One shot, because both users look again themselves and would otherwise be woken for each of a
// hundred files that a package brings. Main thread. Costs nothing while nothing happens.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"

namespace velotap {

class FolderWatch {
 public:
  /// `changed` is called at most once and may destroy the watch.
  FolderWatch(DescriptorLoop& loop, std::function<void()> changed);
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  /// Any change in the folder's files. A folder that does not exist yet is waited for instead.
  /// False when neither it nor any folder above it can be watched.
  bool addFolder(const std::string& folder);
  /// The appearance of one file, or of the folder on the way to it that is missing first.
  bool addAppearance(const std::string& file);

 private:
  bool addWatch(const std::string& folder, unsigned mask, const std::string& name);
  void drain();

  DescriptorLoop& loop_;
  std::function<void()> changed_;
  int inotify_ = -1;
  Observation readable_;
  /// What counts in each watched folder: file names, where an empty one means every file.
  std::multimap<int, std::string> names_;
};

}  // namespace velotap
