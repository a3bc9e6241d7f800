// Tells whenever one of some files may have changed: written, replaced, appeared or vanished.
//
// Follows files by their names, because settings are replaced rather than rewritten; a folder that
// does not exist yet is waited for. Several changes at once are told once. Main thread; costs
// nothing while nothing happens.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"

namespace velotap {

class FileWatch {
 public:
  /// `changed` may destroy neither the watch nor the loop. A system that watches no files calls it
  /// never.
  FileWatch(DescriptorLoop& loop, std::vector<std::string> files, std::function<void()> changed);
  ~FileWatch();
  FileWatch(const FileWatch&) = delete;
  FileWatch& operator=(const FileWatch&) = delete;

 private:
  void watchAll();
  void watchFile(const std::string& file);
  void readEvents();
  [[nodiscard]] bool drain();

  const std::vector<std::string> files_;
  const std::function<void()> changed_;
  int inotify_ = -1;
  /// In each watched folder the names that matter: files, or the next folder on the way to one.
  std::map<int, std::set<std::string>> names_;
  Observation readable_;
};

}  // namespace velotap
