#include "adapters/macos/workspace/mac_applications.hpp"

#include <set>

namespace velotap {
namespace {

ApplicationBundle described(const CocoaBundle& bundle) {
  return {bundle.bundleId.value_or(""), bundle.displayName.value_or(""),
          bundle.bundleName.value_or(""), bundle.path};
}

}  // namespace

std::optional<ApplicationBundle> MacApplications::find(const std::string& bundleId) {
  const auto bundle = cocoa_.bundleWithId(bundleId);
  if (!bundle) return std::nullopt;
  ApplicationBundle found = described(*bundle);
  // The system looks identifiers up without regard to case; rules are compared with it.
  found.bundleId = bundleId;
  return found;
}

std::vector<ApplicationBundle> MacApplications::installed() {
  std::vector<ApplicationBundle> applications;
  std::set<std::string> seen;
  for (const CocoaBundle& bundle : cocoa_.bundlesInApplicationFolders()) {
    if (bundle.bundleId && !bundle.bundleId->empty() && seen.insert(*bundle.bundleId).second) {
      applications.push_back(described(bundle));
    }
  }
  return applications;
}

std::vector<RunningInstance> MacApplications::running() {
  std::vector<RunningInstance> instances;
  for (const CocoaApplication& application : cocoa_.running()) {
    instances.push_back(
        {application.bundleId.value_or(""), application.name.value_or(""), application.regular});
  }
  return instances;
}

}  // namespace velotap
