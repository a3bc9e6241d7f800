// The Linux adapters of the application shell, as one platform, beside those of LinuxDesktop.
//
// Made and destroyed on the main thread, after the desktop and before it. Making it starts no
// program and connects to nothing.
#pragma once

#include <functional>
#include <string>

#include "adapters/linux/desktop/linux_desktop.hpp"
#include "adapters/linux/services/access_watch.hpp"
#include "adapters/linux/services/autostart_item.hpp"
#include "adapters/linux/services/desktop_url_opener.hpp"
#include "adapters/linux/services/pkexec_prompt.hpp"
#include "platform/announcements.hpp"
#include "platform/shell_platform.hpp"
#include "platform/updates.hpp"

namespace velotap {

class LinuxShell {
 public:
  LinuxShell(const LinuxHost& host, LinuxDesktop& desktop, Announcements& announcements,
             UpdateService& updates);

  [[nodiscard]] ShellPlatform& platform() noexcept { return platform_; }

  /// Where crash reports are kept: "Velotap/Crashes" below the user's folder for state.
  [[nodiscard]] static std::string crashFolder(
      const std::function<const char*(const char* name)>& environment);
  /// Where entries live that start programs at login.
  [[nodiscard]] static std::string autostartFolder(
      const std::function<const char*(const char* name)>& environment);
  /// The program that starts everything, whichever of its parts this process is.
  [[nodiscard]] static std::string programPath();

 private:
  DesktopUrlOpener urls_;
  AutostartItem loginItem_;
  AccessWatch access_;
  PkexecPrompt prompt_;
  ShellPlatform platform_;
};

}  // namespace velotap
