// The window in front as KWin tells it to programs that may bind org_kde_plasma_window_management.
//
// KWin offers the interface only to a program whose desktop file has an absolute Exec naming the
// program and lists the interface under X-KDE-Wayland-Interfaces; to all others the source is
// absent and kwin_script_front_source.hpp does the work. Main thread.
#pragma once

#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/workspace/front_source.hpp"

namespace velotap {

/// `socket` is the compositor's; an empty one refuses as unreachable.
[[nodiscard]] std::unique_ptr<FrontSource> makePlasmaFrontSource(DescriptorLoop& loop,
                                                                 std::string socket);

}  // namespace velotap
