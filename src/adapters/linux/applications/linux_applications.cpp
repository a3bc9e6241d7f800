#include "adapters/linux/applications/linux_applications.hpp"

#include <unistd.h>

#include <map>
#include <set>
#include <string>
#include <utility>

namespace velotap {
namespace {

ApplicationBundle bundleOf(const InstalledApplication& application) {
  return {.bundleId = application.id,
          .displayName = application.name,
          .bundleName = {},
          .location = application.location};
}

// The application that each program means; null where several entries name it.
std::map<std::string, const InstalledApplication*> applicationsByProgram(
    const ApplicationIndex& index) {
  std::map<std::string, const InstalledApplication*> result;
  for (const InstalledApplication& each : index.all()) {
    if (!each.inMenus || each.program.empty()) continue;
    const auto [known, isNew] = result.emplace(each.program, &each);
    if (!isNew) known->second = nullptr;
  }
  return result;
}

}  // namespace

LinuxApplications::LinuxApplications(InstalledApplications& installed, Running running)
    : installed_(installed), running_(std::move(running)) {
  if (!running_) running_ = [] { return runningPrograms("/proc", getuid()); };
}

std::optional<ApplicationBundle> LinuxApplications::find(const std::string& bundleId) {
  const InstalledApplication* const found = installed_.index().byId(bundleId);
  if (found == nullptr) return std::nullopt;
  return bundleOf(*found);
}

std::vector<ApplicationBundle> LinuxApplications::installed() {
  std::vector<ApplicationBundle> result;
  for (const InstalledApplication& each : installed_.index().all()) {
    if (each.inMenus) result.push_back(bundleOf(each));
  }
  return result;
}

std::vector<RunningInstance> LinuxApplications::running() {
  const ApplicationIndex& index = installed_.index();
  const auto byProgram = applicationsByProgram(index);
  std::set<const InstalledApplication*> found;
  for (const RunningProgram& process : running_()) {
    const InstalledApplication* application =
        process.application.empty() ? nullptr : index.byId(process.application);
    if (application == nullptr) {
      const auto named = byProgram.find(process.program);
      if (named != byProgram.end()) application = named->second;
    }
    if (application != nullptr) found.insert(application);
  }
  std::vector<RunningInstance> result;
  result.reserve(found.size());
  for (const InstalledApplication* each : found) {
    result.push_back({.bundleId = each->id, .name = each->name, .regular = each->inMenus});
  }
  return result;
}

std::string LinuxApplications::icon(const std::string& bundleId) {
  const InstalledApplication* const found = installed_.index().byId(bundleId);
  return found == nullptr ? std::string() : found->icon;
}

}  // namespace velotap
