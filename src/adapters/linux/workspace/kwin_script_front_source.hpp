// The window in front as a small script inside KWin tells it, for a KWin that does not offer us its
// list of windows.
//
// Main thread. Dormant while no KWin is on the bus. The script is unloaded when the source is
// destroyed; one that a crash left behind is replaced by the next start, since both bear the same
// name, and until then it calls an address that nobody has.
#pragma once

#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/workspace/front_source.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

/// The script reaches KWin as a file in `runtimeFolder`, which is the user's alone.
[[nodiscard]] std::unique_ptr<FrontSource> makeKwinScriptFrontSource(DescriptorLoop& loop,
                                                                     MainQueue& queue,
                                                                     std::string busAddress,
                                                                     std::string runtimeFolder);

}  // namespace velotap
