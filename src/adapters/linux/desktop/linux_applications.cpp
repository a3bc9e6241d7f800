#include "adapters/linux/desktop/linux_applications.hpp"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <utility>

namespace velotap {
namespace {

namespace fs = std::filesystem;

bool isNumber(const std::string& name) {
  return !name.empty() && std::all_of(name.begin(), name.end(),
                                      [](unsigned char c) { return std::isdigit(c) != 0; });
}

// Base names of the programs whose processes may be looked into: this user's own.
std::set<std::string> programsOf(const std::string& processes) {
  std::set<std::string> programs;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(processes, error)) {
    if (!isNumber(entry.path().filename().string())) continue;
    std::error_code unreadable;
    const fs::path program = fs::read_symlink(entry.path() / "exe", unreadable);
    if (!unreadable) programs.insert(program.filename().string());
  }
  return programs;
}

}  // namespace

LinuxApplications::LinuxApplications(InstalledApplications& installed,
                                     std::vector<std::string> folders, std::string processes)
    : installed_(installed), folders_(std::move(folders)), processes_(std::move(processes)) {}

ApplicationBundle LinuxApplications::bundleOf(const InstalledApplication& application) const {
  ApplicationBundle bundle{application.id, application.name, {}, {}};
  for (const std::string& folder : folders_) {
    std::error_code error;
    const fs::path file = fs::path(folder) / (application.id + ".desktop");
    if (!fs::exists(file, error)) continue;
    bundle.location = file.string();
    break;
  }
  return bundle;
}

std::optional<ApplicationBundle> LinuxApplications::find(const std::string& bundleId) {
  const InstalledApplication* application = installed_.index().byId(bundleId);
  if (application == nullptr) return std::nullopt;
  return bundleOf(*application);
}

std::vector<ApplicationBundle> LinuxApplications::installed() {
  std::vector<ApplicationBundle> bundles;
  for (const InstalledApplication& application : installed_.index().all()) {
    if (application.inMenus) bundles.push_back(bundleOf(application));
  }
  return bundles;
}

std::vector<RunningInstance> LinuxApplications::running() {
  const std::set<std::string> programs = programsOf(processes_);
  std::vector<RunningInstance> instances;
  for (const InstalledApplication& application : installed_.index().all()) {
    if (application.program.empty() || programs.count(application.program) == 0) continue;
    instances.push_back(
        {.bundleId = application.id, .name = application.name, .regular = application.inMenus});
  }
  return instances;
}

std::string LinuxApplications::icon(const std::string& bundleId) {
  const InstalledApplication* application = installed_.index().byId(bundleId);
  return application == nullptr ? std::string() : application->icon;
}

}  // namespace velotap
