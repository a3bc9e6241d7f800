// Every Linux adapter, wired to the others, as one platform.
//
// Made and destroyed on the main thread; members are listed in the order in which they need each
// other. Creating it opens the settings, the virtual pointer and the session's servers, and starts
// the output threads; nothing is read from an input device.
//
// The main loop and the alerts are the program's: a program without windows sleeps in its own loop
// and prints, one with windows lives in its toolkit's.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "adapters/linux/clicks/linux_event_taps.hpp"
#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/desktop/passive_adapters.hpp"
#include "adapters/linux/desktop_settings/linux_system_preferences.hpp"
#include "adapters/linux/devices/device_access.hpp"
#include "adapters/linux/gesture/gesture_touchpad.hpp"
#include "adapters/linux/gesture/uinput_touchpad.hpp"
#include "adapters/linux/keyboard/xkb_keyboard_layout.hpp"
#include "adapters/linux/notices/linux_notices.hpp"
#include "adapters/linux/notices/session_activity.hpp"
#include "adapters/linux/output/paced_output.hpp"
#include "adapters/linux/output/pointer_locator.hpp"
#include "adapters/linux/output/uinput_event_stream.hpp"
#include "adapters/linux/output/uinput_pointer.hpp"
#include "adapters/linux/preferences/file_preferences_storage.hpp"
#include "adapters/linux/runtime/dl_library_loader.hpp"
#include "adapters/linux/services/seat_trust.hpp"
#include "adapters/linux/workspace/linux_workspace.hpp"
#include "adapters/posix/standard_log.hpp"
#include "platform/platform.hpp"

namespace velotap {

/// What the program itself brings along. It outlives the desktop.
struct LinuxHost {
  Clock& clock;
  MainQueue& queue;
  DescriptorLoop& loop;
  Alerts& alerts;
};

class LinuxDesktop {
 public:
  /// `debug` turns diagnostic lines on.
  LinuxDesktop(const LinuxHost& host, bool debug);

  [[nodiscard]] Platform& platform() noexcept { return platform_; }
  [[nodiscard]] SessionActivity& sessionActivity() noexcept { return activity_; }
  [[nodiscard]] LinuxEventTaps& taps() noexcept { return taps_; }
  /// The devices whose clicks may be converted, and what stands in the way of each.
  [[nodiscard]] std::vector<LinuxEventTaps::DeviceStatus> clickDevices() const {
    return taps_.status();
  }
  [[nodiscard]] Observation observeClickDevices(std::function<void()> changed) {
    return taps_.observeStatus(std::move(changed));
  }
  [[nodiscard]] LinuxWorkspace& workspace() noexcept { return workspace_; }
  /// To be told where the pointer is over the program's own windows, where nobody else tells.
  [[nodiscard]] PointerLocator& pointerLocator() noexcept { return locator_; }

 private:
  [[nodiscard]] LinuxEventTaps::Links tapLinks(const LinuxHost& host);

  StandardLog log_;
  DlLibraryLoader libraries_;
  FilePreferencesStorage preferences_;
  LinuxSystemPreferences systemPreferences_;
  XkbKeyboardLayout keyboardLayout_;
  LinuxWorkspace workspace_;
  LinuxNotices notices_;
  SessionActivity activity_;
  DeviceAccess access_;
  SeatTrust trust_;
  NotificationCenter notifications_;
  UinputPointer pointer_;
  PacedOutput output_;
  PointerLocator locator_;
  UinputTouchpad touchpad_;
  GestureTouchpad gestures_;
  UinputEventStream events_;
  LinuxEventTaps taps_;
  Observation sessionChanges_;
  Observation touchpadChanges_;
  Observation layoutChanges_;
  Platform platform_;
};

}  // namespace velotap
