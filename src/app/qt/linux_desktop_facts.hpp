// What a Linux desktop makes worth telling in the settings window, from what its adapters know.
//
// Main thread; asked each second while the General pane is shown.
#pragma once

#include <vector>

#include "adapters/linux/desktop/linux_desktop.hpp"
#include "settings/general_pane.hpp"

namespace velotap {

[[nodiscard]] FrontTeller frontTeller(FrontSourceKind source) noexcept;

/// Those that were wanted and could not be had.
[[nodiscard]] std::vector<RefusedDevice> refusedDevices(
    const std::vector<LinuxEventTaps::DeviceStatus>& devices);

[[nodiscard]] DesktopFacts linuxDesktopFacts(LinuxDesktop& desktop);

}  // namespace velotap
