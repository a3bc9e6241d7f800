// What touchpads are set to on an X server, whichever desktop set it.
//
// There the settings are properties of the devices, written by the desktop and obeyed by the
// server's driver, so they tell what holds rather than what somebody stored. Main thread. Reading
// waits for the server's answers; it happens at the start and when a device or a property changes.
#pragma once

#include <functional>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/desktop_settings/touchpad_settings.hpp"

struct xcb_connection_t;

namespace velotap {

class X11Touchpads {
 public:
  /// `display` names the server as DISPLAY does; `changed` is called when other settings were read.
  X11Touchpads(DescriptorLoop& loop, const std::string& display, std::function<void()> changed);
  ~X11Touchpads();
  X11Touchpads(const X11Touchpads&) = delete;
  X11Touchpads& operator=(const X11Touchpads&) = delete;

  /// Without a server, or without touchpads, the input library's defaults.
  [[nodiscard]] const DesktopTouchpads& touchpads() const noexcept { return touchpads_; }

 private:
  struct Reader;
  [[nodiscard]] bool selectEvents() const;
  [[nodiscard]] DesktopTouchpads read() const;
  [[nodiscard]] bool refresh();
  void serve();

  const std::function<void()> changed_;
  xcb_connection_t* connection_ = nullptr;
  DesktopTouchpads touchpads_;
  Observation readable_;
};

}  // namespace velotap
