// Settings domains as JSON files in one folder: `<folder>/<domain>.json`.
//
// Main thread. Files are replaced atomically, and watched for other writers. A file that cannot be
// understood is set aside under another name with a message, never overwritten; one that may not
// be read is left alone, and nothing is written over it. Two writers do not undo each other: what
// is written is the caller's changes since it last read, laid over what the file holds by then.
#pragma once

#include <sys/types.h>

#include <ctime>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "adapters/linux/preferences/atomic_file.hpp"
#include "platform/preferences_storage.hpp"

namespace velotap {

/// `$XDG_CONFIG_HOME/velotap`, or `~/.config/velotap`; a relative XDG_CONFIG_HOME does not count.
[[nodiscard]] std::string configurationFolder();

class FilePreferencesStorage final : public PreferencesStorage {
 public:
  /// Tells a person what happened to a file; called on the main thread.
  using Report = std::function<void(const std::string& message)>;

  FilePreferencesStorage(std::string folder, Report report, FileCalls calls = FileCalls::system());
  ~FilePreferencesStorage() override;
  FilePreferencesStorage(const FilePreferencesStorage&) = delete;
  FilePreferencesStorage& operator=(const FilePreferencesStorage&) = delete;

  [[nodiscard]] ValueMap load(std::string_view domain) override;
  bool store(std::string_view domain, const ValueMap& values) override;
  [[nodiscard]] Observation observe(std::string_view domain,
                                    std::function<void()> changed) override;

  /// Readable when files may have changed; -1 when the folder cannot be watched. The main loop
  /// calls `dispatchChanges` then.
  [[nodiscard]] int watchDescriptor() const noexcept { return watch_; }
  void dispatchChanges();

 private:
  /// Tells one state of a file from another.
  struct Fingerprint {
    bool present = false;
    ino_t inode = 0;
    off_t size = 0;
    timespec changed{};
    bool operator==(const Fingerprint& other) const noexcept;
  };
  struct Domain {
    ValueMap known;  // what the caller last read or wrote
    Fingerprint seen;
    bool writable = true;  // false while the file may not be read
    ObserverList<> observers;
  };

  [[nodiscard]] std::string pathOf(std::string_view domain) const;
  [[nodiscard]] static Fingerprint fingerprint(const std::string& path);
  Domain& read(std::string_view domain);
  bool setAside(const std::string& path, const std::string& why);

  std::string folder_;
  Report report_;
  FileCalls calls_;
  int watch_ = -1;
  std::map<std::string, Domain, std::less<>> domains_;
};

}  // namespace velotap
