// A settings folder, storages on it, and what they told.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/preferences/file_preferences_storage.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap::test {

constexpr const char* kDomain = "app.example";

/// Files obey permissions for ordinary users only: becomes one until the end, where it was root.
class OrdinaryUser {
 public:
  explicit OrdinaryUser(const std::filesystem::path& home) {
    if (::geteuid() != 0) return;
    changed_ = ::chown(home.c_str(), kNobody, kNobody) == 0 && ::seteuid(kNobody) == 0;
    EXPECT_TRUE(changed_);
  }
  ~OrdinaryUser() {
    if (changed_) {
      EXPECT_EQ(::seteuid(0), 0);
    }
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  static constexpr uid_t kNobody = 65534;
  bool changed_ = false;
};

class SettingsFolder : public ::testing::Test {
 protected:
  using Path = std::filesystem::path;

  FilePreferencesStorage open(FileCalls calls = FileCalls::system()) {
    return FilePreferencesStorage(
        queue, folder.string(), [this](const std::string& message) { reports.push_back(message); },
        std::move(calls));
  }
  /// What was told since the last time.
  std::vector<std::string> told() { return std::exchange(reports, {}); }
  /// Lets the storages hear of what changed on disk.
  void settle() { queue.runReady(); }

  [[nodiscard]] Path file() const { return folder / (std::string(kDomain) + ".json"); }
  [[nodiscard]] Path aside(int n) const { return file().string() + ".broken-" + std::to_string(n); }
  void put(const std::string& text) const { put(file(), text); }
  static void put(const Path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
  }
  /// As careful writers do: another file in its place.
  void replace(const std::string& text) const {
    put(file().string() + ".other", text);
    std::filesystem::rename(file().string() + ".other", file());
  }
  [[nodiscard]] std::string content() const { return content(file()); }
  [[nodiscard]] static std::string content(const Path& path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
  }
  [[nodiscard]] std::vector<std::string> names() const { return names(folder); }
  [[nodiscard]] static std::vector<std::string> names(const Path& path) {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      found.push_back(entry.path().filename().string());
    }
    std::sort(found.begin(), found.end());
    return found;
  }
  [[nodiscard]] static mode_t modeOf(const Path& path) {
    struct stat info {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
    return info.st_mode & 0777U;
  }

  TemporaryFolder root;
  Path folder = root.path() / "config" / "velotap";
  PosixClock clock;
  PosixMainQueue queue{clock};
  std::vector<std::string> reports;
};

}  // namespace velotap::test
