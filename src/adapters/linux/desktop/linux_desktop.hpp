// Every Linux adapter, wired to the others, as one platform.
//
// Made and destroyed on the main thread; members are listed in the order in which they need each
// other. Creating it opens the settings, the virtual pointer and the session's servers, and starts
// the output threads; nothing is read from an input device.
#pragma once

#include <memory>

#include "adapters/linux/clicks/console_watch.hpp"
#include "adapters/linux/clicks/linux_event_taps.hpp"
#include "adapters/linux/desktop/passive_adapters.hpp"
#include "adapters/linux/desktop_settings/linux_system_preferences.hpp"
#include "adapters/linux/devices/device_access.hpp"
#include "adapters/linux/devices/udev_devices.hpp"
#include "adapters/linux/gesture/gesture_touchpad.hpp"
#include "adapters/linux/gesture/uinput_touchpad.hpp"
#include "adapters/linux/keyboard/xkb_keyboard_layout.hpp"
#include "adapters/linux/output/paced_output.hpp"
#include "adapters/linux/output/pointer_locator.hpp"
#include "adapters/linux/output/uinput_event_stream.hpp"
#include "adapters/linux/output/uinput_pointer.hpp"
#include "adapters/linux/preferences/file_preferences_storage.hpp"
#include "adapters/linux/runtime/dl_library_loader.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "adapters/linux/runtime/standard_log.hpp"
#include "adapters/linux/workspace/linux_workspace.hpp"
#include "platform/platform.hpp"

namespace velotap {

class LinuxDesktop {
 public:
  /// `debug` turns diagnostic lines on.
  explicit LinuxDesktop(bool debug);

  [[nodiscard]] Platform& platform() noexcept { return platform_; }
  [[nodiscard]] PosixMainQueue& mainQueue() noexcept { return queue_; }
  [[nodiscard]] LinuxEventTaps& taps() noexcept { return taps_; }
  [[nodiscard]] LinuxWorkspace& workspace() noexcept { return workspace_; }

 private:
  [[nodiscard]] LinuxEventTaps::Links tapLinks();

  PosixClock clock_;
  StandardLog log_;
  PosixMainQueue queue_;
  DlLibraryLoader libraries_;
  FilePreferencesStorage preferences_;
  LinuxSystemPreferences systemPreferences_;
  XkbKeyboardLayout keyboardLayout_;
  LinuxWorkspace workspace_;
  UdevNotices notices_;
  DeviceAccess access_;
  PrintedAlerts alerts_;
  NotificationCenter notifications_;
  UinputPointer pointer_;
  PacedOutput output_;
  PointerLocator locator_;
  UinputTouchpad touchpad_;
  GestureTouchpad gestures_;
  UinputEventStream events_;
  LinuxEventTaps taps_;
  ConsoleWatch console_;
  Observation touchpadChanges_;
  Observation layoutChanges_;
  Platform platform_;
};

}  // namespace velotap
