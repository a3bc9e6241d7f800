// The port for what goes stale: devices that come and go, sleep, displays.
#pragma once

#include <functional>
#include <optional>

#include "base/observer_list.hpp"

namespace velotap {

/// Callbacks come on the main thread, but for the display's, which may come on any.
class SystemNotices {
 public:
  virtual ~SystemNotices() = default;
  /// Each watch reports on its own whether it could be set up; one that could not costs only its
  /// own notices. A failure carries the system's error code.
  struct DeviceWatch {
    bool portFailed = false;         ///< nothing at all is watched
    std::optional<int> attachError;  ///< attachments are not watched
    std::optional<int> detachError;  ///< detachments are not watched
    Observation observation;
  };
  [[nodiscard]] virtual DeviceWatch watchDevices(std::function<void()> attached,
                                                 std::function<void()> detached) = 0;
  [[nodiscard]] virtual Observation watchSleep(std::function<void()> willSleep,
                                               std::function<void()> didWake) = 0;
  [[nodiscard]] virtual Observation watchDisplays(std::function<void()> reconfigured) = 0;
};

/// May the program read touches and post events?
class AccessibilityTrust {
 public:
  virtual ~AccessibilityTrust() = default;
  [[nodiscard]] virtual bool trusted() = 0;
};

}  // namespace velotap
