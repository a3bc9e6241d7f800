#include "adapters/linux/files/file_watch.hpp"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <utility>

namespace velotap {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kEvents = IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM |
                                  IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::uint32_t kFolderGone = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED;

// Folders may appear while we look for them; somebody who makes and removes one for ever must not
// keep us.
constexpr int kMostAttempts = 16;

}  // namespace

FileWatch::FileWatch(DescriptorLoop& loop, std::vector<std::string> files,
                     std::function<void()> changed)
    : files_(std::move(files)), changed_(std::move(changed)) {
  inotify_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (inotify_ < 0) return;
  watchAll();
  readable_ = loop.watch(inotify_, DescriptorLoop::Interest::readable, [this] { readEvents(); });
}

FileWatch::~FileWatch() {
  readable_.reset();
  if (inotify_ >= 0) ::close(inotify_);
}

void FileWatch::watchAll() {
  const auto before = std::exchange(names_, {});
  for (const auto& file : files_) watchFile(file);
  for (const auto& [watch, names] : before) {
    if (!names_.contains(watch)) inotify_rm_watch(inotify_, watch);
  }
}

void FileWatch::watchFile(const std::string& file) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    fs::path wanted(file);
    int watch = -1;
    while (true) {
      const fs::path folder = wanted.parent_path();
      if (folder.empty()) return;
      watch = inotify_add_watch(inotify_, folder.c_str(), kEvents);
      if (watch >= 0 || folder == wanted) break;
      wanted = folder;
    }
    if (watch < 0) return;
    names_[watch].insert(wanted.filename().string());
    // Did the folder that we wait for appear before we watched its parent?
    std::error_code error;
    if (wanted == fs::path(file) || !fs::is_directory(wanted, error)) return;
  }
}

void FileWatch::readEvents() {
  if (!drain()) return;
  watchAll();
  changed_();
}

/// True when something that matters happened.
bool FileWatch::drain() {
  bool matters = false;
  alignas(inotify_event) std::array<char, 4096> buffer{};
  ssize_t size = 0;
  while ((size = ::read(inotify_, buffer.data(), buffer.size())) > 0) {
    for (ssize_t at = 0; at < size;) {
      inotify_event event{};
      std::memcpy(&event, buffer.data() + at, sizeof event);
      const char* name = event.len > 0 ? buffer.data() + at + sizeof event : "";
      const auto watched = names_.find(event.wd);
      if ((event.mask & IN_Q_OVERFLOW) != 0) {
        matters = true;
      } else if (watched != names_.end()) {
        matters = matters || (event.mask & kFolderGone) != 0 || watched->second.contains(name);
      }
      at += static_cast<ssize_t>(sizeof event) + static_cast<ssize_t>(event.len);
    }
  }
  return matters;
}

}  // namespace velotap
