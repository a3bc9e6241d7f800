// The window in front as compositors tell it that offer zwlr_foreign_toplevel_manager_v1: sway and
// most others built on wlroots.
//
// Main thread. X programs are listed too, with their window class as app id.
#pragma once

#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/workspace/front_source.hpp"

namespace velotap {

/// `socket` is the compositor's; an empty one refuses as unreachable.
[[nodiscard]] std::unique_ptr<FrontSource> makeWlrootsFrontSource(DescriptorLoop& loop,
                                                                  std::string socket);

}  // namespace velotap
