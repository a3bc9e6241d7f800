#include "adapters/macos/shell/mac_panels.hpp"

#include <stdlib.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace velotap {
namespace {

// Twice what a list shows, for screens with two pixels a point.
constexpr int kIconPixels = 64;

// A folder that nobody else has; empty when none can be made.
std::string newFolder() {
  std::error_code failed;
  const std::filesystem::path temporary = std::filesystem::temp_directory_path(failed);
  if (failed) return {};
  std::string name = (temporary / "velotap-icons-XXXXXX").string();
  return ::mkdtemp(name.data()) != nullptr ? name : std::string();
}

}  // namespace

MacPanels::~MacPanels() {
  if (folder_.empty()) return;
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::vector<std::string> MacPanels::chooseApplications(const std::string& message) {
  std::vector<std::string> identifiers;
  for (const std::string& path : dialogs_.chooseApplications(message)) {
    auto bundle = workspace_.bundleAtPath(path);
    if (bundle && bundle->bundleId && !bundle->bundleId->empty()) {
      identifiers.push_back(std::move(*bundle->bundleId));
    }
  }
  return identifiers;
}

bool MacPanels::saveText(std::string_view name, const std::string& text) {
  const auto place = dialogs_.chooseSaveLocation(std::string(name));
  return !place || dialogs_.writeFile(*place, text);
}

std::string MacPanels::icon(const std::string& bundleId) {
  const auto bundle = workspace_.bundleWithId(bundleId);
  if (!bundle) return {};
  const auto known = icons_.find(bundle->path);
  if (known != icons_.end()) return known->second;
  std::string drawn = drawnIcon(bundle->path);
  if (!drawn.empty()) icons_.emplace(bundle->path, drawn);
  return drawn;
}

std::string MacPanels::drawnIcon(const std::string& path) {
  const std::vector<std::byte> image = dialogs_.icon(path, kIconPixels);
  if (image.empty()) return {};
  if (folder_.empty()) folder_ = newFolder();
  if (folder_.empty()) return {};
  std::string file = folder_ + "/" + std::to_string(icons_.size()) + ".png";
  std::string bytes(image.size(), '\0');
  for (std::size_t i = 0; i < image.size(); ++i) bytes[i] = static_cast<char>(image[i]);
  return dialogs_.writeFile(file, bytes) ? file : std::string();
}

}  // namespace velotap
