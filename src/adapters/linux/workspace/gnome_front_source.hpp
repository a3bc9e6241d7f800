// The window in front as our extension of GNOME Shell tells it. GNOME tells other programs nothing.
//
// Main thread. Dormant while the extension is not on the bus: not installed, switched off, or the
// screen is locked. The extension is packaging/gnome-extension; the names in the source file are
// what the two agree on.
#pragma once

#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/workspace/front_source.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

[[nodiscard]] std::unique_ptr<FrontSource> makeGnomeFrontSource(DescriptorLoop& loop,
                                                                MainQueue& queue,
                                                                std::string busAddress);

}  // namespace velotap
