#include "adapters/linux/session/folder_watch.hpp"

#include <sys/inotify.h>
#include <unistd.h>

#include <cstring>
#include <string_view>
#include <tuple>
#include <utility>

namespace velotap {
namespace {

constexpr unsigned kAppears = IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr unsigned kChanges = kAppears | IN_MOVED_FROM | IN_DELETE | IN_CLOSE_WRITE;

/// Folder and name of a path; the folder of "/x" is "/".
std::pair<std::string, std::string> split(const std::string& path) {
  const auto slash = path.find_last_of('/');
  if (slash == std::string::npos || path.size() < 2) return {};
  return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

}  // namespace

FolderWatch::FolderWatch(DescriptorLoop& loop, std::function<void()> changed)
    : loop_(loop), changed_(std::move(changed)), inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (inotify_ < 0) return;
  readable_ = loop_.watch(inotify_, DescriptorLoop::Interest::readable, [this] { drain(); });
}

FolderWatch::~FolderWatch() {
  readable_.reset();
  if (inotify_ >= 0) close(inotify_);
}

bool FolderWatch::addWatch(const std::string& folder, unsigned mask, const std::string& name) {
  if (!readable_.active()) return false;
  // Two files of interest in one folder share the kernel's watch: masks add up.
  const int watch = inotify_add_watch(inotify_, folder.c_str(), mask | IN_MASK_ADD | IN_ONLYDIR);
  if (watch < 0) return false;
  names_.emplace(watch, name);
  return true;
}

bool FolderWatch::addFolder(const std::string& folder) {
  return addWatch(folder, kChanges, {}) || addAppearance(folder);
}

bool FolderWatch::addAppearance(const std::string& file) {
  for (auto [folder, name] = split(file); !folder.empty();) {
    if (addWatch(folder, kAppears, name)) return true;
    std::tie(folder, name) = split(folder);
  }
  return false;
}

void FolderWatch::drain() {
  alignas(inotify_event) char buffer[4096];
  bool relevant = false;
  ssize_t length = 0;
  while ((length = read(inotify_, buffer, sizeof buffer)) > 0) {
    for (const char* at = buffer; at < buffer + length;) {
      inotify_event event;
      std::memcpy(&event, at, sizeof event);
      const std::string_view name(event.len > 0 ? at + sizeof event : "");
      at += sizeof event + event.len;
      const bool lost = (event.mask & (IN_Q_OVERFLOW | IN_IGNORED | IN_MOVE_SELF)) != 0;
      const auto [first, last] = names_.equal_range(event.wd);
      for (auto wanted = first; wanted != last; ++wanted) {
        relevant |= wanted->second.empty() || wanted->second == name;
      }
      relevant |= lost;
    }
  }
  if (!relevant) return;
  readable_.reset();
  if (const auto changed = std::exchange(changed_, nullptr)) changed();
}

}  // namespace velotap
