// A folder that lives as long as a test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace velotap::test {

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

  [[nodiscard]] std::string operator/(const std::string& name) const { return path_ + "/" + name; }
  [[nodiscard]] const std::string& path() const noexcept { return path_; }
  void write(const std::string& name, const std::string& text) const {
    const std::filesystem::path file = *this / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
  }
  void makeFolder(const std::string& name) const {
    std::filesystem::create_directories(*this / name);
  }
  void remove(const std::string& name) const { std::filesystem::remove_all(*this / name); }

 private:
  std::string path_;
};

/// The text of a desktop entry with these lines.
inline std::string desktopEntry(const std::string& name, const std::string& more = {}) {
  return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more;
}

}  // namespace velotap::test
