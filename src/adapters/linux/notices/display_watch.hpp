// Tells whenever the displays may have changed: one was connected, switched, moved, turned or taken
// away.
//
// Main thread. Ends with the object. A server that is not there, or goes away, is simply silent:
// what would come back with it is a new session.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/session/session_environment.hpp"

namespace velotap {

class DisplayWatch {
 public:
  virtual ~DisplayWatch() = default;
};

/// Asks the Wayland compositor where there is one (an X server beside it knows only what the
/// compositor tells it), else the X server. Null without either.
[[nodiscard]] std::unique_ptr<DisplayWatch> watchDisplays(DescriptorLoop& loop,
                                                          const SessionEnvironment& session,
                                                          std::function<void()> reconfigured);

[[nodiscard]] std::unique_ptr<DisplayWatch> watchX11Displays(DescriptorLoop& loop,
                                                             const std::string& display,
                                                             std::function<void()> reconfigured);

[[nodiscard]] std::unique_ptr<DisplayWatch> watchWaylandDisplays(
    DescriptorLoop& loop, const std::string& socket, std::function<void()> reconfigured);

}  // namespace velotap
