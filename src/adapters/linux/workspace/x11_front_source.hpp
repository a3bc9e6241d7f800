// The window in front as the window manager of an X server tells it: _NET_ACTIVE_WINDOW on the
// root window, then what that window says of itself.
//
// Main thread. After connecting, nothing waits for the server: answers are taken when they come,
// and a newer active window makes the answers about an older one worthless. Dormant while no
// window manager keeps the property; never ends the process when the server does.
#pragma once

#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/workspace/front_source.hpp"

namespace velotap {

[[nodiscard]] std::unique_ptr<FrontSource> makeX11FrontSource(DescriptorLoop& loop,
                                                              std::string display);

}  // namespace velotap
