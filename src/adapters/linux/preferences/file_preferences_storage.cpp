#include "adapters/linux/preferences/file_preferences_storage.hpp"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "adapters/json/json_value.hpp"

namespace velotap {
namespace {

constexpr int kMostSetAside = 1000;

bool sameContent(const FileContent& a, const FileContent& b) {
  return a.state == b.state && a.text == b.text;
}

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

FilePreferencesStorage::FilePreferencesStorage(DescriptorLoop& loop, std::string folder,
                                               Report report, FileCalls calls)
    : folder_(std::move(folder)),
      report_(std::move(report)),
      calls_(std::move(calls)),
      watch_(loop, {}, [this] { checkForChanges(); }) {}

ValueMap FilePreferencesStorage::load(std::string_view name) {
  Domain& entry = domain(name);
  // Whoever else reads this domain must hear of what we are about to take as known.
  if (refresh(entry, Look::forChanges)) entry.observers.notify();
  entry.told = entry.known;
  return entry.known;
}

bool FilePreferencesStorage::store(std::string_view name, const ValueMap& values) {
  Domain& entry = domain(name);
  // What stood in the way may be gone without showing: a folder that may be written to again.
  const bool foreign = refresh(entry, entry.writable ? Look::forChanges : Look::again);
  // Others' changes that the caller has not read yet are neither undone nor taken for its own.
  const bool written = entry.writable && write(entry, rebased(entry.told, values, entry.known));
  if (written) entry.told = values;
  if (foreign) entry.observers.notify();
  return written;
}

Observation FilePreferencesStorage::observe(std::string_view name, std::function<void()> changed) {
  return domain(name).observers.add(std::move(changed));
}

FilePreferencesStorage::Domain& FilePreferencesStorage::domain(std::string_view name) {
  if (const auto found = domains_.find(name); found != domains_.end()) return found->second;
  Domain& entry = domains_[std::string(name)];
  entry.path = folder_ + "/" + std::string(name) + ".json";
  removeLeftovers(entry.path);
  followFiles();
  refresh(entry, Look::again);
  return entry;
}

/// True when the file holds other settings than at the last look; they are known then.
bool FilePreferencesStorage::refresh(Domain& entry, Look look) {
  const FileContent content = readFile(entry.path, kLargestSettingsFile);
  if (look == Look::forChanges && sameContent(content, entry.seen)) return false;
  const ValueMap before = entry.known;
  entry.seen = content;
  take(entry, content);
  followFiles();
  return !(entry.known == before);
}

void FilePreferencesStorage::take(Domain& entry, const FileContent& content) {
  entry.writable = true;
  std::string problem = content.error;
  switch (content.state) {
    case FileContent::State::absent:
      entry.known.clear();
      return;
    case FileContent::State::unreadable:
      report_(entry.path + " cannot be read (" + problem + "); nothing will be written over it");
      entry.writable = false;
      return;
    case FileContent::State::present:
      if (auto values = parseSettings(content.text, problem)) {
        entry.known = *std::move(values);
        return;
      }
      break;
    case FileContent::State::notAFile:
    case FileContent::State::tooLarge:
      break;
  }
  takeBroken(entry, problem);
}

void FilePreferencesStorage::takeBroken(Domain& entry, const std::string& why) {
  entry.writable = setAside(entry, why);
  if (!entry.writable) return;
  entry.seen = FileContent();
  if (!entry.known.empty()) write(entry, ValueMap(entry.known));
}

bool FilePreferencesStorage::write(Domain& entry, const ValueMap& values) {
  std::string problem;
  auto text = settingsText(values, problem);
  if (text && text->size() > kLargestSettingsFile) {
    problem = "they are larger than " + std::to_string(kLargestSettingsFile) + " bytes";
    text.reset();
  }
  if (!text) {
    report_(entry.path + " cannot hold the settings: " + problem);
    return false;
  }
  auto error = createFolder(folder_);
  if (!error) error = replaceFile(entry.path, *text, calls_);
  if (error) {
    report_(entry.path + " could not be written (" + *error + "); the file is as it was");
    return false;
  }
  entry.known = values;
  entry.seen = FileContent{FileContent::State::present, *std::move(text), {}};
  return true;
}

bool FilePreferencesStorage::setAside(const Domain& entry, const std::string& why) {
  const std::string what = entry.path + " is not a settings file (" + why + ")";
  for (int n = 1; n <= kMostSetAside; ++n) {
    const std::string aside = entry.path + ".broken-" + std::to_string(n);
    struct stat info {};
    if (::lstat(aside.c_str(), &info) == 0) continue;
    if (calls_.rename(entry.path.c_str(), aside.c_str()) != 0) break;
    const char* inForce =
        entry.known.empty() ? "factory settings are" : "settings from before stay";
    report_(std::string(what)
                .append("; it was set aside as ")
                .append(aside)
                .append(", and the ")
                .append(inForce)
                .append(" in force"));
    return true;
  }
  report_(what + " and cannot be set aside; nothing will be written over it");
  return false;
}

void FilePreferencesStorage::checkForChanges() {
  for (auto& [name, entry] : domains_) {
    if (refresh(entry, Look::forChanges)) entry.observers.notify();
  }
}

/// The links on the way to the files lead elsewhere now and then.
void FilePreferencesStorage::followFiles() {
  std::vector<std::string> files;
  for (const auto& [name, entry] : domains_) {
    for (std::string& file : linkChain(entry.path)) files.push_back(std::move(file));
  }
  watch_.setFiles(std::move(files));
}

}  // namespace velotap
