// What the adapters ask of the shared workspace, which only Objective-C can reach.
//
// The one implementation on a Mac is a translation without decisions; everything that is decided is
// decided by those who call it.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/observer_list.hpp"

namespace velotap {

/// An application as the system tells of it. What it does not tell is nothing.
struct CocoaApplication {
  std::optional<std::string> bundleId = {};
  std::optional<std::string> name = {};
  std::optional<std::string> bundlePath = {};
  bool regular = false;  ///< has a place in the Dock
};

/// An application's bundle as its own description tells of it.
struct CocoaBundle {
  std::string path;
  std::optional<std::string> bundleId = {};
  std::optional<std::string> displayName = {};
  std::optional<std::string> bundleName = {};
};

enum class WorkspaceNotice { willSleep, didWake, didActivate };

class CocoaWorkspace {
 public:
  virtual ~CocoaWorkspace() = default;
  /// The identifier of this program's bundle; nothing when it runs without one. Any thread.
  [[nodiscard]] virtual std::optional<std::string> ownBundleId() = 0;
  /// Where this program's bundle is; nothing when it runs without one.
  [[nodiscard]] virtual std::optional<std::string> ownBundlePath() = 0;
  /// Copies the identifier of the frontmost application, without a terminator; how long it is, 0
  /// when there is none. Nothing is copied when it does not fit. Any thread.
  [[nodiscard]] virtual std::size_t frontmostBundleId(char* buffer, std::size_t capacity) = 0;
  /// Main thread, as all that follows.
  [[nodiscard]] virtual std::optional<CocoaApplication> frontmost() = 0;
  [[nodiscard]] virtual std::vector<CocoaApplication> running() = 0;
  /// Where the system would start this application from; nothing when it is not installed.
  [[nodiscard]] virtual std::optional<CocoaBundle> bundleWithId(const std::string& bundleId) = 0;
  /// What lies at this path; nothing when that is no bundle.
  [[nodiscard]] virtual std::optional<CocoaBundle> bundleAtPath(const std::string& path) = 0;
  /// The bundles in the folders that applications are kept in, and one level of folders below.
  [[nodiscard]] virtual std::vector<CocoaBundle> bundlesInApplicationFolders() = 0;
  /// Calls back on the main thread; with the application that the notice names, if it does.
  [[nodiscard]] virtual Observation observe(
      WorkspaceNotice notice, std::function<void(const std::optional<CocoaApplication>&)> told) = 0;
  /// False when nothing opens such an address.
  virtual bool openUrl(const std::string& url) = 0;
  /// Shows a file in its folder.
  virtual void reveal(const std::string& path) = 0;

  /// The workspace of this system. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<CocoaWorkspace> system();
};

}  // namespace velotap
