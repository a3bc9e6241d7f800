#include "app/qt/linux_desktop_facts.hpp"

#include <cerrno>

#include "adapters/linux/devices/undriven_mouse.hpp"

namespace velotap {

FrontTeller frontTeller(FrontSourceKind source) noexcept {
  switch (source) {
    case FrontSourceKind::none:
      break;
    case FrontSourceKind::x11:
      return FrontTeller::xServer;
    case FrontSourceKind::wlroots:
    case FrontSourceKind::kdeWindowManagement:
    case FrontSourceKind::kdeScript:
      return FrontTeller::compositor;
    case FrontSourceKind::gnomeExtension:
      return FrontTeller::extension;
  }
  return FrontTeller::nobody;
}

std::vector<RefusedDevice> refusedDevices(
    const std::vector<LinuxEventTaps::DeviceStatus>& devices) {
  std::vector<RefusedDevice> refused;
  for (const LinuxEventTaps::DeviceStatus& device : devices) {
    if (device.status.state != GrabState::refused) continue;
    refused.push_back({.name = device.name, .heldByAnother = device.status.error == EBUSY});
  }
  return refused;
}

DesktopFacts linuxDesktopFacts(LinuxDesktop& desktop) {
  return {.frontTeller = frontTeller(desktop.workspace().source().kind),
          .accessByRule = true,
          .mouseWithoutDriver = hasUndrivenMouse(),
          .refused = refusedDevices(desktop.taps().status())};
}

}  // namespace velotap
