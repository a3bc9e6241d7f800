#include "adapters/linux/preferences/file_preferences_storage.hpp"

#include <pwd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "adapters/json/json_value.hpp"

namespace velotap {
namespace {

// Hundreds of times what every setting together takes.
constexpr std::size_t kLargestFile = std::size_t{4} << 20;
constexpr int kMostSetAside = 1000;

// The changes that lead from one dictionary to another, laid over a third.
ValueMap rebased(const ValueMap& from, const ValueMap& to, ValueMap onto) {
  for (const auto& [key, value] : to) {
    const auto old = from.find(key);
    if (old == from.end() || !(old->second == value)) onto.insert_or_assign(key, value);
  }
  for (const auto& [key, value] : from) {
    if (!to.contains(key)) onto.erase(key);
  }
  return onto;
}

}  // namespace

std::string configurationFolder() {
  const char* configured = std::getenv("XDG_CONFIG_HOME");
  if (configured != nullptr && configured[0] == '/') return std::string(configured) + "/velotap";
  const char* home = std::getenv("HOME");
  if (home == nullptr || home[0] != '/') {
    const passwd* user = ::getpwuid(::getuid());
    home = user != nullptr ? user->pw_dir : "/";
  }
  return std::string(home) + "/.config/velotap";
}

bool FilePreferencesStorage::Fingerprint::operator==(const Fingerprint& other) const noexcept {
  return present == other.present && inode == other.inode && size == other.size &&
         changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
}

FilePreferencesStorage::FilePreferencesStorage(std::string folder, Report report, FileCalls calls)
    : folder_(std::move(folder)), report_(std::move(report)), calls_(std::move(calls)) {
  std::error_code failed;
  const std::filesystem::path path(folder_);
  std::filesystem::create_directories(path.parent_path(), failed);
  if (::mkdir(folder_.c_str(), 0700) != 0 && errno != EEXIST) {
    report_("cannot create the settings folder " + folder_ + ": " + std::strerror(errno));
  }
  watch_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (watch_ >= 0 && ::inotify_add_watch(watch_, folder_.c_str(),
                                         IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE |
                                             IN_ONLYDIR) < 0) {
    ::close(std::exchange(watch_, -1));
  }
}

FilePreferencesStorage::~FilePreferencesStorage() {
  if (watch_ >= 0) ::close(watch_);
}

ValueMap FilePreferencesStorage::load(std::string_view domain) {
  return read(domain).known;
}

bool FilePreferencesStorage::store(std::string_view domain, const ValueMap& values) {
  const std::string path = pathOf(domain);
  // A domain that was never read may hold what the caller does not know of.
  const bool isNew = !domains_.contains(domain);
  const ValueMap base = isNew ? ValueMap() : domains_.find(domain)->second.known;
  const bool foreign = isNew || !(fingerprint(path) == domains_.find(domain)->second.seen);
  Domain& entry = foreign ? read(domain) : domains_.find(domain)->second;
  if (!entry.writable) {
    report_(path + " cannot be read, so it is not written either");
    return false;
  }
  const ValueMap merged = foreign ? rebased(base, values, entry.known) : values;
  std::string problem;
  const auto text = settingsText(merged, problem);
  if (!text) {
    report_(path + " cannot hold the settings: " + problem);
    return false;
  }
  if (const auto error = replaceFile(path, *text, calls_)) {
    report_(path + " could not be written (" + *error + "); the file is as it was");
    return false;
  }
  entry.known = merged;
  entry.seen = fingerprint(path);
  if (foreign) entry.observers.notify();
  return true;
}

Observation FilePreferencesStorage::observe(std::string_view domain,
                                            std::function<void()> changed) {
  const auto found = domains_.find(domain);
  Domain& entry = found != domains_.end() ? found->second : read(domain);
  return entry.observers.add(std::move(changed));
}

void FilePreferencesStorage::dispatchChanges() {
  alignas(inotify_event) std::array<char, 4096> events;
  while (::read(watch_, events.data(), events.size()) > 0) {
  }
  // Which file it was does not matter: fingerprints tell, and there are two files at most.
  for (auto& [name, entry] : domains_) {
    if (fingerprint(pathOf(name)) == entry.seen) continue;
    read(name);
    entry.observers.notify();
  }
}

std::string FilePreferencesStorage::pathOf(std::string_view domain) const {
  return folder_ + "/" + std::string(domain) + ".json";
}

FilePreferencesStorage::Fingerprint FilePreferencesStorage::fingerprint(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return {};
  return {.present = true, .inode = info.st_ino, .size = info.st_size, .changed = info.st_ctim};
}

FilePreferencesStorage::Domain& FilePreferencesStorage::read(std::string_view domain) {
  Domain& entry = domains_.try_emplace(std::string(domain)).first->second;
  const std::string path = pathOf(domain);
  entry.seen = fingerprint(path);
  entry.known.clear();
  entry.writable = true;
  const FileContent content = readFile(path, kLargestFile);
  std::string problem = content.error;
  switch (content.state) {
    case FileContent::State::absent:
      return entry;
    case FileContent::State::unreadable:
      report_(path + " cannot be read: " + problem);
      entry.writable = false;
      return entry;
    case FileContent::State::present:
      if (auto values = parseSettings(content.text, problem)) {
        entry.known = *std::move(values);
        return entry;
      }
      break;
    case FileContent::State::notAFile:
    case FileContent::State::tooLarge:
      break;
  }
  entry.writable = setAside(path, problem);
  entry.seen = fingerprint(path);
  return entry;
}

bool FilePreferencesStorage::setAside(const std::string& path, const std::string& why) {
  for (int n = 1; n <= kMostSetAside; ++n) {
    const std::string aside = path + ".broken-" + std::to_string(n);
    struct stat info {};
    if (::lstat(aside.c_str(), &info) == 0) continue;
    if (calls_.rename(path.c_str(), aside.c_str()) != 0) break;
    report_(path + " is not a settings file (" + why + "); it was set aside as " + aside +
            " and the factory settings are in force");
    return true;
  }
  report_(path + " is not a settings file (" + why +
          ") and cannot be set aside; nothing will be written over it");
  return false;
}

}  // namespace velotap
