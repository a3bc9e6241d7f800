#include "adapters/macos/workspace/mac_workspace.hpp"

#include <array>

namespace velotap {
namespace {

// Settings take identifiers of less than 256 bytes; whatever is longer is no application of ours.
constexpr std::size_t kLongestId = 1024;

AppId interned(const std::optional<std::string>& text) {
  return text ? AppId::intern(*text) : AppId();
}

std::optional<RunningApplication> applicationOf(const std::optional<CocoaApplication>& told) {
  if (!told) return std::nullopt;
  return RunningApplication{interned(told->bundleId), told->name.value_or("")};
}

}  // namespace

MacWorkspace::MacWorkspace(CocoaWorkspace& cocoa, const ObjectiveCApi& runtime)
    : cocoa_(cocoa), runtime_(runtime), own_(interned(cocoa.ownBundleId())) {}

AppId MacWorkspace::frontmostBundleId() {
  const AutoreleasePool pool(runtime_);
  std::array<char, kLongestId> buffer;
  const std::size_t length = cocoa_.frontmostBundleId(buffer.data(), buffer.size());
  if (length == 0 || length > buffer.size()) return {};
  return AppId::intern(std::string_view(buffer.data(), length));
}

std::optional<RunningApplication> MacWorkspace::frontmostApplication() {
  return applicationOf(cocoa_.frontmost());
}

Observation MacWorkspace::observeActivations(
    std::function<void(const std::optional<RunningApplication>&)> activated) {
  return cocoa_.observe(
      WorkspaceNotice::didActivate,
      [activated = std::move(activated)](const std::optional<CocoaApplication>& told) {
        activated(applicationOf(told));
      });
}

}  // namespace velotap
