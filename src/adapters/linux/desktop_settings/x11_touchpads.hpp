// What touchpads are set to on an X server, whichever desktop set it.
//
// There the settings are properties of the devices, written by the desktop and obeyed by the
// server's driver, so they tell what holds rather than what somebody stored. Main thread. Reading
// waits for the server's answers; it happens at the start, when a device or a property changes, and
// when a server that went away is back. Meanwhile what was known last stays.
#pragma once

#include <functional>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/desktop_settings/touchpad_settings.hpp"
#include "adapters/linux/session/reconnection.hpp"
#include "platform/main_queue.hpp"

struct xcb_connection_t;

namespace velotap {

class X11Touchpads {
 public:
  /// `display` names the server as DISPLAY does; `changed` is called when other settings were read.
  X11Touchpads(DescriptorLoop& loop, MainQueue& queue, std::string display,
               std::function<void()> changed);
  ~X11Touchpads();
  X11Touchpads(const X11Touchpads&) = delete;
  X11Touchpads& operator=(const X11Touchpads&) = delete;

  /// Without a server, or without touchpads, the input library's defaults.
  [[nodiscard]] const DesktopTouchpads& touchpads() const noexcept { return touchpads_; }

 private:
  struct Reader;
  [[nodiscard]] bool connect();
  void disconnect();
  [[nodiscard]] bool selectEvents() const;
  [[nodiscard]] DesktopTouchpads read() const;
  [[nodiscard]] bool refresh();
  void serve();

  DescriptorLoop& loop_;
  const std::string display_;
  const std::function<void()> changed_;
  xcb_connection_t* connection_ = nullptr;
  DesktopTouchpads touchpads_;
  Observation readable_;
  Reconnection reconnection_;
  bool told_ = false;  ///< somebody may have read the settings
};

}  // namespace velotap
