#include "adapters/linux/workspace/installed_applications.hpp"

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <utility>

#include "adapters/linux/workspace/desktop_entry.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;

/// Far above any real entry (the largest have some 60 kB of translations): whatever is larger is
/// something else under that name.
constexpr std::uintmax_t kLargestEntry = 1U << 20U;
/// Sub-folders below this are not looked into; links may make circles.
constexpr int kDeepest = 4;

class Reading {
 public:
  Reading(FolderWatch& watch, const std::vector<std::string>& languages)
      : watch_(watch), languages_(languages) {}

  void readFolder(const fs::path& folder, const std::string& prefix, int depth) {
    watch_.addFolder(folder.string());
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
      const std::string name = entry->path().filename().string();
      std::error_code unreadable;
      if (entry->is_directory(unreadable)) {
        if (depth < kDeepest) readFolder(entry->path(), prefix + name + '-', depth + 1);
      } else if (name.size() > kSuffix.size() && name.ends_with(kSuffix)) {
        readEntry(entry->path(), prefix + name.substr(0, name.size() - kSuffix.size()));
      }
    }
  }

  [[nodiscard]] std::vector<InstalledApplication> take() { return std::move(found_); }

 private:
  static constexpr std::string_view kSuffix = ".desktop";

  void readEntry(const fs::path& file, std::string id) {
    if (seen_.contains(id)) return;
    std::error_code error;
    if (fs::file_size(file, error) > kLargestEntry || error) return;
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    auto entry = parseDesktopEntry(std::move(text).str(), languages_);
    if (!entry) return;
    seen_.insert(id);
    if (entry->hidden) return;
    found_.push_back({.id = std::move(id),
                      .name = std::move(entry->name),
                      .icon = std::move(entry->icon),
                      .windowClass = std::move(entry->windowClass),
                      .program = std::move(entry->program),
                      .inMenus = entry->inMenus,
                      .location = file.string()});
  }

  FolderWatch& watch_;
  const std::vector<std::string>& languages_;
  std::vector<InstalledApplication> found_;
  std::set<std::string, std::less<>> seen_;
};

}  // namespace

InstalledApplications::InstalledApplications(DescriptorLoop& loop, std::vector<std::string> folders,
                                             std::vector<std::string> languages)
    : loop_(loop), folders_(std::move(folders)), languages_(std::move(languages)) {}

const ApplicationIndex& InstalledApplications::index() {
  if (stale_) readFolders();
  return index_;
}

void InstalledApplications::readFolders() {
  // Watched before it is read: what changes meanwhile is read next time.
  watch_ = std::make_unique<FolderWatch>(loop_, [this] { stale_ = true; });
  stale_ = false;
  Reading reading(*watch_, languages_);
  for (const std::string& folder : folders_) reading.readFolder(folder, {}, 0);
  index_ = ApplicationIndex(reading.take());
}

}  // namespace velotap
