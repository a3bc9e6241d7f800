#include "adapters/linux/notices/display_watch.hpp"

#include <utility>

namespace velotap {

std::unique_ptr<DisplayWatch> watchDisplays(DescriptorLoop& loop, const SessionEnvironment& session,
                                            std::function<void()> reconfigured) {
  if (isWayland(session)) {
    const std::string socket = waylandSocket(session);
    if (socket.empty()) return nullptr;
    return watchWaylandDisplays(loop, socket, std::move(reconfigured));
  }
  if (session.display.empty()) return nullptr;
  return watchX11Displays(loop, session.display, std::move(reconfigured));
}

}  // namespace velotap
