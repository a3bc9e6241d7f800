// Settings domains as JSON files in one folder: `<folder>/<domain>.json`.
//
// Main thread. Files are replaced atomically, and followed for other writers, links included; what
// we write ourselves is nobody else's change. Nothing is created before something is stored.
//
// Two writers do not undo each other: what is written is the caller's changes, that is whatever
// differs from what it last read or wrote, laid over what the file holds by then. A caller that
// never read only adds, and removes what it wrote itself. Only a writer who replaces the file
// between that reading and our replacing it would lose.
//
// A file that cannot be understood is set aside under another name with a message, never
// overwritten; one that may not be read is left alone with a message, and nothing is written over
// it. Either way what the file last held stays loaded, and in the first case is written back: a
// slip of the pen in an editor does not cost a person their settings.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/files/file_watch.hpp"
#include "adapters/linux/files/read_file.hpp"
#include "adapters/linux/preferences/atomic_file.hpp"
#include "platform/preferences_storage.hpp"

namespace velotap {

/// `$XDG_CONFIG_HOME/velotap`, or `~/.config/velotap`; a relative XDG_CONFIG_HOME does not count.
[[nodiscard]] std::string configurationFolder();

/// No settings file is larger; hundreds of times what every setting together takes.
inline constexpr std::size_t kLargestSettingsFile = std::size_t{4} << 20;

class FilePreferencesStorage final : public PreferencesStorage {
 public:
  /// Tells a person what happened to a file; called on the main thread.
  using Report = std::function<void(const std::string& message)>;

  FilePreferencesStorage(DescriptorLoop& loop, std::string folder, Report report,
                         FileCalls calls = FileCalls::system());
  FilePreferencesStorage(const FilePreferencesStorage&) = delete;
  FilePreferencesStorage& operator=(const FilePreferencesStorage&) = delete;

  [[nodiscard]] ValueMap load(std::string_view domain) override;
  bool store(std::string_view domain, const ValueMap& values) override;
  [[nodiscard]] Observation observe(std::string_view domain,
                                    std::function<void()> changed) override;

 private:
  struct Domain {
    std::string path;
    ValueMap known;        // the settings that are in force: what the file last held, understood
    ValueMap told;         // what the caller last read or wrote: it knows of these keys alone
    FileContent seen;      // what the file last held
    bool writable = true;  // false while something is in the way that may not be lost
    ObserverList<> observers;
  };

  enum class Look { forChanges, again };

  Domain& domain(std::string_view name);
  bool refresh(Domain& domain, Look look);
  void take(Domain& domain, const FileContent& content);
  void takeBroken(Domain& domain, const std::string& why);
  bool write(Domain& domain, const ValueMap& values);
  bool setAside(const Domain& domain, const std::string& why);
  void checkForChanges();
  void followFiles();

  std::string folder_;
  Report report_;
  FileCalls calls_;
  std::map<std::string, Domain, std::less<>> domains_;
  FileWatch watch_;
};

}  // namespace velotap
