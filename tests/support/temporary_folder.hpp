// A folder that lives as long as a test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace velotap {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velotap-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp");
    path_ = pattern;
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
  [[nodiscard]] std::string operator/(const std::string& name) const { return path_ / name; }
  void write(const std::string& name, const std::string& text) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << text;
  }
  /// As careful programs write: a new file in the place of the old one.
  void replace(const std::string& name, const std::string& text) const {
    write("replacement", text);
    std::filesystem::create_directories((path_ / name).parent_path());
    std::filesystem::rename(path_ / "replacement", path_ / name);
  }
  void makeFolder(const std::string& name) const {
    std::filesystem::create_directories(path_ / name);
  }
  void remove(const std::string& name) const { std::filesystem::remove_all(path_ / name); }

 private:
  std::filesystem::path path_;
};

}  // namespace velotap
